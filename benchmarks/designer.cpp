// SPDX-License-Identifier: MIT
// Typing in the action designer stays below one frame of a display, however many actions there are.
#include "actiondesignerwidget.h"
#include "actiontaskblockwidget.h"
#include "argumentform.h"
#include "pair.h"
#include "subjects.h"
#include "testhome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QStandardPaths>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>

#include <ctime>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
constexpr int steps = 20;

QJsonArray functions()
{
    QJsonArray functions;
    for (int i = 0; i < 500; ++i) {
        QJsonArray params;
        for (const auto &name : {"cible"_L1, "vitesse"_L1, "actif"_L1})
            params.append(QJsonObject{{u"name"_s, name}, {u"preferredType"_s, u"string"_s}});
        functions.append(QJsonObject{{u"name"_s, u"fonction_%1"_s.arg(i)}, {u"params"_s, params}});
    }
    return functions;
}

QJsonArray actionsOfTwentySteps(int count)
{
    QJsonArray tasks;
    for (int i = 0; i < steps; ++i)
        tasks.append(QJsonObject{{u"ref"_s, u"fonction_%1"_s.arg(i)},
                                 {u"args"_s, QJsonObject{{u"cible"_s, u"nord"_s}}},
                                 {u"when"_s, u"state(\"mode\") == 2"_s}});
    QJsonArray actions;
    for (int i = 0; i < count; ++i)
        actions.append(QJsonObject{{u"name"_s, u"Action %1"_s.arg(i)}, {u"tasks"_s, tasks}});
    return actions;
}

void writeUserFile(const QJsonArray &actions)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/Gamepads"_L1;
    QDir().mkpath(folder);
    QFile file(folder + "/actions.json"_L1);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(actions).toJson()) <= 0)
        qFatal("%s cannot be written", qUtf8Printable(file.fileName()));
}

void press(QWidget *widget, Qt::Key key, const QString &text)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &event);
}

/// A designer on show, with the first of `count` actions chosen.
class ShownDesigner
{
public:
    explicit ShownDesigner(int count)
        : m_designer(loaded(count))
    {
        m_designer->setFunctions(functions());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the steps without functions
        m_designer->resize(1000, 740);
        m_designer->show();
        m_name = m_designer->findChild<QLineEdit *>("actionNameEdit"_L1);
        m_field = m_designer->findChild<ArgumentForm *>()->fields().first().edit;
        QApplication::processEvents();
    }

    /// Types one character into `line` and takes it back, each with all that follows it, painting included.
    static void typeInto(QLineEdit *line)
    {
        press(line, Qt::Key_A, u"a"_s);
        QApplication::processEvents();
        press(line, Qt::Key_Backspace, u"\b"_s);
        QApplication::processEvents();
    }

    [[nodiscard]] Side typing(QLineEdit *line) const
    {
        return repeated([line] { typeInto(line); }, 2);
    }

    [[nodiscard]] QLineEdit *name() const { return m_name; }
    [[nodiscard]] QLineEdit *field() const { return m_field; }

    /// Whether a character typed into the name and one typed into the field arrive in the list.
    [[nodiscard]] bool takesWhatIsTyped() const
    {
        press(m_name, Qt::Key_X, u"x"_s);
        press(m_field, Qt::Key_Y, u"y"_s);
        const QJsonObject action = m_designer->actions().first().toObject();
        const QJsonArray tasks = action["tasks"_L1].toArray();
        return action["name"_L1].toString().endsWith(u'x') && tasks.size() == steps &&
               tasks.first()["args"_L1]["cible"_L1].toString() == u"nordy"_s;
    }

private:
    static std::unique_ptr<ActionDesignerWidget> loaded(int count)
    {
        writeUserFile(actionsOfTwentySteps(count));
        return std::make_unique<ActionDesignerWidget>();
    }

    std::unique_ptr<ActionDesignerWidget> m_designer;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_field = nullptr;
};

/// The processor time that one frame of a 60 Hz display has.
void oneFrame()
{
    const std::clock_t end = std::clock() + CLOCKS_PER_SEC / 60;
    while (std::clock() < end) {}
}

void measureTyping(benchmark::State &state, QLineEdit *(ShownDesigner::*line)() const)
{
    const ShownDesigner designer(200);
    compare(state, designer.typing((designer.*line)()), timed(oneFrame));
    require(state, designer.takesWhatIsTyped(), "what was typed did not arrive in the list");
}

void measureGrowth(benchmark::State &state)
{
    const ShownDesigner many(200);
    const ShownDesigner few(2);
    compare(state, many.typing(many.field()), few.typing(few.field()));
    require(state, many.takesWhatIsTyped() && few.takesWhatIsTyped(),
            "what was typed did not arrive in the list");
}
} // namespace

void addDesignerPairs(const Suite &suite)
{
    suite.add({.name = "designer/typed-argument",
               .what = "a character typed into a step, 200 actions of 20, over a 60 Hz frame",
               .limit = 1.0,
               .rounds = 61},
              [](benchmark::State &state) { measureTyping(state, &ShownDesigner::field); });
    suite.add({.name = "designer/typed-name",
               .what = "a character typed into a name, 200 actions of 20 steps, over a 60 Hz frame",
               .limit = 1.0,
               .rounds = 61},
              [](benchmark::State &state) { measureTyping(state, &ShownDesigner::name); });
    suite.add({.name = "designer/growth",
               .what = "a character typed into a step among 200 actions, over among 2",
               .limit = 1.2},
              measureGrowth);
}
