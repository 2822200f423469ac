// SPDX-License-Identifier: MIT
#include "functionlistmodel.h"

#include "entries.h"
#include "testmain.h"

#include <QtGui/QColor>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace
{
FunctionCatalogue catalogue(const EditorTraits &traits = toolBoxTraits)
{
    return FunctionCatalogue::read(
        {function(u"Tir"_s), function(u"Vol"_s, {param(u"a"_s, u"int"_s)}), function(u"Tir"_s)}, traits);
}

QStringList texts(const FunctionListModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row).data().toString());
    return texts;
}
} // namespace

class TestFunctionListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void itIsEmptyBeforeTheFirstCatalogue()
    {
        const FunctionListModel model(toolBoxTraits);
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(!model.functionAt(0));
        QCOMPARE(model.rowOf(-1), -1);
        QCOMPARE(model.rowOf(0), -1);
        QCOMPARE(model.indexOf(u"Tir"_s), -1);
    }

    void itListsNoFunctionFirst()
    {
        FunctionListModel inToolBox(toolBoxTraits);
        inToolBox.setCatalogue(catalogue());
        QCOMPARE(texts(inToolBox), (QStringList{QString(), u"Tir"_s, u"Vol(int a = 0)"_s, u"Tir"_s}));
        FunctionListModel onCard(taskBlockTraits);
        onCard.setCatalogue(catalogue(taskBlockTraits));
        QCOMPARE(texts(onCard),
                 (QStringList{u"Choisir une action"_s, u"Tir()"_s, u"Vol(int a=0)"_s, u"Tir()"_s}));
    }

    void everyRowKnowsItsFunction()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(catalogue());
        QCOMPARE(model.appendUnknown(u"X"_s), 3);
        for (int row = 0; row < model.rowCount(); ++row) {
            const int index = model.index(row).data(Qt::UserRole).toInt();
            QCOMPARE(index, row - 1);
            QCOMPARE(model.rowOf(index), row);
        }
        QVERIFY(!model.functionAt(-1));
        QCOMPARE(model.functionAt(1)->name, u"Vol"_s);
        QCOMPARE(*model.functionAt(3), (FunctionDef{u"X"_s, QString(), {}}));
        QVERIFY(!model.functionAt(4));
        QCOMPARE(model.rowOf(4), -1);
    }

    void theFirstOfANameIsFound()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(catalogue());
        QCOMPARE(model.indexOf(u"Tir"_s), 0);
        QCOMPARE(model.indexOf(u"tir"_s), -1);
        model.appendUnknown(u"X"_s);
        model.appendUnknown(u"Y"_s);
        QCOMPARE(model.indexOf(u"Y"_s), 4);
    }

    void onlyUnknownFunctionsAreOrange()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(catalogue());
        model.appendUnknown(u"X"_s);
        for (int row = 0; row < 4; ++row)
            QVERIFY(!model.index(row).data(Qt::ForegroundRole).isValid());
        QCOMPARE(model.index(4).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 165, 0));
        QVERIFY(!model.index(4).data(Qt::DecorationRole).isValid());
    }

    void anotherCatalogueDropsWhatWasAppended()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(catalogue());
        model.appendUnknown(u"X"_s);
        model.setCatalogue(FunctionCatalogue());
        QCOMPARE(texts(model), QStringList{QString()});
        model.clear();
        QCOMPARE(model.rowCount(), 0);
    }

    void anUnknownFunctionCanBeAppendedBeforeTheFirstCatalogue()
    {
        FunctionListModel model(toolBoxTraits);
        QCOMPARE(model.appendUnknown(u"X"_s), 0);
        QCOMPARE(texts(model), QStringList{u"X"_s});
        QCOMPARE(model.rowOf(0), 0);
        QCOMPARE(model.index(0).data(Qt::UserRole), QVariant(0));
        QCOMPARE(model.index(0).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 165, 0));
    }

    void whoListensMayAppendAnother()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(catalogue());
        connect(
            &model, &QAbstractItemModel::rowsInserted, this, [&model] { model.appendUnknown(u"Y"_s); },
            Qt::SingleShotConnection);
        QCOMPARE(model.appendUnknown(u"X"_s), 3);
        QCOMPARE(model.functionAt(3)->name, u"X"_s);
        QCOMPARE(model.functionAt(4)->name, u"Y"_s);
    }

    void itKeepsTheRulesOfModels()
    {
        FunctionListModel model(toolBoxTraits);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        model.appendUnknown(u"X"_s);
        model.setCatalogue(catalogue());
        model.appendUnknown(u"Y"_s);
        model.clear();
        QCOMPARE(reset.count(), 2);
        QCOMPARE(inserted.count(), 2);
        QVERIFY(!model.data(QModelIndex(), Qt::DisplayRole).isValid());
        QCOMPARE(model.rowCount(model.index(0)), 0);
    }

    void theWidestEntryCountsAllOfThem()
    {
        const QWidget widget;
        const QFontMetrics metrics(widget.font());
        const auto widest = [&](const FunctionListModel &model) {
            return model.widestEntry(widget.font(), &widget);
        };
        FunctionListModel model(taskBlockTraits);
        model.setCatalogue(FunctionCatalogue());
        QCOMPARE(widest(model), metrics.boundingRect(u"Choisir une action"_s).width());
        const QString longName = u"une_fonction_au_nom_plus_long"_s;
        model.setCatalogue(FunctionCatalogue::read({function(longName)}, taskBlockTraits));
        QCOMPARE(widest(model), metrics.boundingRect(longName + u"()"_s).width());
        model.appendUnknown(longName + longName);
        QCOMPARE(widest(model), metrics.boundingRect(longName + longName + u"()"_s).width());
    }
};

GAMEPAD_TEST_MAIN(TestFunctionListModel)
#include "tst_functionlistmodel.moc"
