// SPDX-License-Identifier: MIT
// A catalogue of functions, and configurations that name them: {"services": [...], "tasks": [...]}. The
// editors take any of them, and what they give back they give back again.
#include "catalogue.h"
#include "actiontaskblockwidget.h"
#include "actiontoolbox.h"
#include "argumenttyping.h"
#include "fuzzing.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype mostFunctions = 24;
constexpr qsizetype mostTasks = 8;

void checkTyping(const QJsonValue &value, const QString &type)
{
    const auto text = argumentText(value, type);
    mustHold(text.has_value() != value.isUndefined(), "a stored value has no text");
    if (!text)
        return;
    const QJsonValue typed = parseArgumentValue(*text, type);
    mustHold(typed.isString() || typed.isDouble() || typed.isBool(), "a typed text is no plain value");
    mustHold(!typed.isDouble() || std::isfinite(typed.toDouble()), "a number cannot be stored");
    mustHold(!isExpression(text->trimmed()) || typed.isString(), "an expression was evaluated");
    // A field shows six digits, so the first round may cost some; no later one does.
    const QJsonValue shown = parseArgumentValue(argumentText(typed, type).value_or(QString()), type);
    const QJsonValue shownAgain = parseArgumentValue(argumentText(shown, type).value_or(QString()), type);
    mustHold(shown.isString() || shown == shownAgain, "a value drifts from save to save");
}

void checkFunctions(const QJsonArray &services, const EditorTraits &traits)
{
    const FunctionCatalogue catalogue = FunctionCatalogue::read(services, traits);
    const QList<FunctionDef> &functions = catalogue.functions();
    for (qsizetype i = 0; i < functions.size(); ++i) {
        const FunctionDef &function = functions[i];
        const int first = catalogue.indexOf(function.name);
        mustHold(!function.name.isEmpty() && first >= 0 && first <= i, "a listed function is not found");
        mustHold(catalogue.signature(i).startsWith(function.name), "a signature lacks its name");
        for (const ParamDef &param : function.params) {
            mustHold(normalizeType(param.type) == param.type, "a type is not normalised");
            checkTyping(param.defaultText, param.type);
        }
    }
}

void checkArguments(const QJsonObject &args)
{
    const QString types[] = {u"int"_s, u"double"_s, u"bool"_s, u"string"_s, u"couleur"_s};
    for (const QJsonValue &value : args) {
        for (const QString &type : types) {
            checkTyping(value, type);
            checkTyping(defaultValueText(value, type), type);
        }
    }
}

void checkToolBox(ActionToolBox &box, const QJsonObject &config)
{
    box.applyConfig(config);
    const QJsonObject given = box.config();
    box.applyConfig(given);
    mustHold(given.isEmpty() || box.config().value("ref"_L1) == given["ref"_L1],
             "a tool box lost its function");
    box.setInputKind(1);
    box.setInputKind(0);
}

void checkCard(ActionTaskBlockWidget &card, const QJsonArray &services, const QJsonObject &task)
{
    if (!card.applyConfig(task))
        return;
    const QJsonObject given = card.config();
    mustHold(given["ref"_L1] == task["ref"_L1], "a card shows another function than it was told");
    card.setFunctions(services);
    mustHold(card.config().value("ref"_L1) == given["ref"_L1],
             "a card lost its function to the same catalogue");
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject input = jsonOf(data, size).object();
    const QJsonArray services = input["services"_L1].toArray();
    const QJsonArray tasks = input["tasks"_L1].toArray();
    if (services.size() > mostFunctions || tasks.size() > mostTasks)
        return 0;

    checkFunctions(services, toolBoxTraits);
    checkFunctions(services, taskBlockTraits);

    ActionToolBox box;
    box.setExternalServices(services);
    ActionTaskBlockWidget card;
    card.setFunctions(services);
    for (const QJsonValue &task : tasks) {
        checkArguments(task["args"_L1].toObject());
        checkToolBox(box, task.toObject());
        checkCard(card, services, task.toObject());
    }
    box.setExternalServices(tasks);
    card.setFunctions(tasks);
    settle();
    return 0;
}
