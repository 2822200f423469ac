// SPDX-License-Identifier: MIT
#include "toolboxstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray catalogue()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s),
                                                       param(u"mode"_s, u"string"_s, u"auto"_s)})};
}

qsizetype windows()
{
    return QApplication::topLevelWidgets().size();
}
} // namespace

class TestActionToolBoxSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }
    void cleanup() { runDeferred(); }

    void thePanelIsMadeAtTheFirstNeed_data()
    {
        QTest::addColumn<int>("need");
        QTest::newRow("a catalogue") << 0;
        QTest::newRow("a configuration") << 1;
        QTest::newRow("opening") << 2;
    }

    void thePanelIsMadeAtTheFirstNeed()
    {
        QFETCH(int, need);
        ToolBoxStage stage;
        QVERIFY(settingsPanels().isEmpty());
        for (int time = 0; time < 2; ++time) {
            if (need == 0)
                stage.box().setExternalServices(catalogue());
            else if (need == 1)
                stage.box().applyConfig(task(u"Tir"_s));
            else
                stage.box().openSettings();
            QCOMPARE(settingsPanels().size(), 1);
        }
    }

    void thePanelIsAPopupOfItsOwn()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        const QFrame *panel = ToolBoxStage::panel();
        QVERIFY(!panel->parent());
        QCOMPARE(panel->windowType(), Qt::Popup);
        QVERIFY(panel->testAttribute(Qt::WA_StyledBackground));
        QVERIFY(!panel->autoFillBackground());

        const auto *layout = qobject_cast<QVBoxLayout *>(panel->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(12, 10, 12, 10));
        QCOMPARE(layout->spacing(), 8);
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->stretch(0), 1);
        const auto *scroll = qobject_cast<QScrollArea *>(layout->itemAt(0)->widget());
        QVERIFY(scroll);
        QVERIFY(scroll->widgetResizable());
        QCOMPARE(scroll->frameShape(), QFrame::NoFrame);
        QCOMPARE(scroll->widget(), ToolBoxStage::form());
        const QFormLayout *rows = ToolBoxStage::form()->formLayout();
        QCOMPARE(rows->contentsMargins(), QMargins());
        QCOMPARE(rows->horizontalSpacing(), 6);
        QCOMPARE(rows->verticalSpacing(), 6);
    }

    void eachParameterHasARow()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s));
        const QFormLayout *rows = ToolBoxStage::form()->formLayout();
        QCOMPARE(rows->rowCount(), 2);
        const QStringList labels{u"cible:"_s, u"mode:"_s};
        const QStringList placeholders{u"<par défaut>"_s, u"auto"_s};
        for (int row = 0; row < 2; ++row) {
            const auto *edit = qobject_cast<QLineEdit *>(rows->itemAt(row, QFormLayout::FieldRole)->widget());
            QVERIFY(edit);
            QCOMPARE(edit->parentWidget(), ToolBoxStage::form());
            QCOMPARE(edit->placeholderText(), placeholders.at(row));
            QCOMPARE(edit->text(), QString());
            const auto *label = qobject_cast<QLabel *>(rows->itemAt(row, QFormLayout::LabelRole)->widget());
            QVERIFY(label);
            QCOMPARE(label->text(), labels.at(row));
        }
    }

    void itOpensBelowTheCombo()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s));
        stage.show();
        stage.box().openSettings();
        const QFrame *panel = ToolBoxStage::panel();
        QVERIFY(panel->isVisible());
        QCOMPARE(QApplication::activePopupWidget(), panel);
        // The offscreen platform gives popups a frame that they do not know of.
        const QMargins frame = panel->windowHandle()->frameMargins();
        QCOMPARE(panel->pos() - QPoint(frame.left(), frame.top()),
                 stage.combo().mapToGlobal(stage.combo().rect().bottomLeft()));
        QVERIFY(ToolBoxStage::edit(0)->isVisible());
        QVERIFY(ToolBoxStage::edit(1)->visibleRegion().boundingRect().height() > 0);
    }

    void itOpensAtTheSameSizeAgain()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s));
        stage.show();
        stage.box().openSettings();
        const QSize first = ToolBoxStage::panel()->size();
        ToolBoxStage::panel()->close();
        stage.box().openSettings();
        QCOMPARE(ToolBoxStage::panel()->size(), first);
    }

    void itGrowsWithItsForm()
    {
        QJsonArray many;
        for (int i = 0; i < 8; ++i)
            many.append(param(u"p%1"_s.arg(i), u"string"_s));
        ToolBoxStage stage;
        stage.box().setExternalServices(
            {function(u"petite"_s, {param(u"a"_s, u"string"_s)}), function(u"f"_s, many)});
        stage.show();
        stage.box().applyConfig(task(u"petite"_s));
        stage.box().openSettings();
        const int small = ToolBoxStage::panel()->height();
        ToolBoxStage::panel()->close();
        stage.box().applyConfig(task(u"f"_s));
        stage.box().openSettings();
        QVERIFY(ToolBoxStage::panel()->height() > small);
    }

    void aClickOutsideClosesIt()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.box().openSettings();
        QVERIFY(ToolBoxStage::panel()->isVisible());
        QTest::mouseClick(stage.window().windowHandle(), Qt::LeftButton, {}, QPoint(590, 390));
        QTRY_VERIFY(!ToolBoxStage::panel()->isVisible());
        QCOMPARE(settingsPanels().size(), 1);
    }

    void escapeClosesIt()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.box().openSettings();
        QTest::keyClick(ToolBoxStage::panel(), Qt::Key_Escape);
        QTRY_VERIFY(!ToolBoxStage::panel()->isVisible());
    }

    void theSettingsOfAToolBoxThatIsNotEditableCanBeOpened()
    {
        ToolBoxStage stage;
        stage.box().setEditable(false);
        stage.box().openSettings();
        QVERIFY(ToolBoxStage::panel()->isVisible());
    }

    void theFormIsRebuiltWhileItIsOnShow()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.box().openSettings();
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        QTRY_VERIFY(ToolBoxStage::edit(0)->isVisible());
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"nord"_s, QString()}));
    }

    void aFieldMayRebuildTheFormThatItIsIn()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s));
        stage.show();
        stage.box().openSettings();
        connect(&stage.box(), &ActionToolBox::durty, &stage.box(), [&] {
            const QSignalBlocker once(&stage.box());
            stage.box().applyConfig(task(u"LockOn"_s));
        });
        QTest::keyClicks(ToolBoxStage::edit(0), u"nord"_s);
        runDeferred();
        QCOMPARE(ToolBoxStage::texts(), QStringList(2, QString()));
    }

    void fieldsThatWaitForTheirDeletionChangeNothing()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s));
        const QPointer<QLineEdit> gone = ToolBoxStage::edit(0);
        stage.box().applyConfig(task(u"LockOn"_s));
        const QJsonObject before = stage.box().config();
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        QVERIFY(gone);
        gone->setText(u"nord"_s);
        QCOMPARE(durty.count(), 0);
        QCOMPARE(stage.box().config(), before);
        QVERIFY(!gone->isVisible());
        runDeferred();
        QVERIFY(!gone);
    }

    void thePanelGoesWithItsToolBox()
    {
        auto stage = std::make_unique<ToolBoxStage>();
        stage->box().setExternalServices(catalogue());
        stage->box().applyConfig(task(u"LockOn"_s));
        stage->show();
        stage->box().openSettings();
        const QPointer<QFrame> panel = ToolBoxStage::panel();
        const QPointer<QLineEdit> edit = ToolBoxStage::edit(0);
        stage.reset();
        QVERIFY(panel); // not before the event loop runs: it may be in the middle of an event
        QVERIFY(!panel->isVisible());
        edit->setText(u"nobody listens"_s);
        runDeferred();
        QVERIFY(!panel);
    }

    void aFieldMayEndTheToolBoxThatItBelongsTo()
    {
        auto stage = std::make_unique<ToolBoxStage>();
        stage->box().setExternalServices(catalogue());
        stage->box().applyConfig(task(u"LockOn"_s));
        stage->show();
        stage->box().openSettings();
        connect(&stage->box(), &ActionToolBox::durty, this, [&] { stage.reset(); });
        QTest::keyClick(ToolBoxStage::edit(0), Qt::Key_A);
        QVERIFY(!stage);
        runDeferred();
        QVERIFY(settingsPanels().isEmpty());
    }

    void manyToolBoxesLeaveNoWindowBehind()
    {
        const qsizetype before = windows();
        for (int i = 0; i < 500; ++i) {
            ToolBoxStage stage;
            stage.box().setExternalServices(catalogue());
            stage.box().applyConfig(task(u"LockOn"_s));
        }
        runDeferred();
        QCOMPARE(windows(), before);
    }

    void aPanelThatSomebodyElseDeletedIsMadeAgain()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        delete ToolBoxStage::panel();
        QCOMPARE(stage.box().config().value("ref"_L1), u"LockOn"_s);
        stage.box().setInputKind(0);
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"sud"_s}}));
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"sud"_s, QString()}));
    }
};

GAMEPAD_TEST_MAIN(TestActionToolBoxSettings)
#include "tst_actiontoolboxsettings.moc"
