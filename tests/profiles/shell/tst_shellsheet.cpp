// SPDX-License-Identifier: MIT
// The look of the whole surface.
#include "shellsheet.h"

#include "manetteconfigurationwidget.h"
#include "sheetdeclarations.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestShellSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void eachPartHasItsLook_data()
    {
        QTest::addColumn<QString>("selector");
        QTest::addColumn<QString>("declaration");
        const auto row = [](const QString &selector, const QString &declaration) {
            QTest::newRow(qPrintable(selector + u' ' + declaration)) << selector << declaration;
        };
        for (const QString &clear :
             {u"#ManetteConfigurationWidget"_s, u"QTabWidget"_s, u"QTabWidget::pane"_s})
            row(clear, u"background: transparent;"_s);

        const QString backdrop = u"QFrame#vlxBackdrop"_s;
        row(backdrop, u"background: qradialgradient(cx: 0.5, cy: 0.0, radius: 1.2,"_s);
        row(backdrop, u"stop: 0 rgba(110, 200, 215, 55), stop: 0.28 rgba(18, 30, 40, 220), "
                      "stop: 1 rgba(9, 14, 18, 255));"_s);
        row(backdrop, u"border: none;"_s);
        row(backdrop, u"border-radius: 0px;"_s);

        const QString surface = u"background: rgba(26, 42, 54, 200);"_s;
        const QString text = u"color: #E8F0F5;"_s;
        const QString border = u"border: 1px solid #2A4456;"_s;
        const QString hover = u"background: #243544;"_s;
        for (const QString &widget : {u"QListWidget"_s, u"QComboBox"_s, u"QPushButton"_s}) {
            row(widget, surface);
            row(widget, text);
            row(widget, border);
        }
        for (const QString &widget :
             {u"QListWidget::item"_s, u"QComboBox"_s, u"QPushButton"_s, u"QTabBar::tab"_s})
            row(widget + u":hover"_s, hover);
        row(u"QListWidget"_s, u"border-radius: 14px;"_s);
        row(u"QListWidget::item"_s, u"border-radius: 8px;"_s);
        row(u"QListWidget::item:selected"_s, u"background: #2F4F63;"_s);
        row(u"QComboBox"_s, u"border-radius: 10px;"_s);
        row(u"QComboBox QAbstractItemView"_s, u"selection-background-color: #2F4F63;"_s);
        row(u"QPushButton"_s, u"border-radius: 8px;"_s);
        row(u"QPushButton:pressed"_s, u"background: #1D2B36;"_s);

        row(u"QTabWidget::pane"_s, u"border: 1px solid rgba(110, 200, 215, 70);"_s);
        row(u"QTabWidget::pane"_s, u"border-radius: 16px;"_s);
        row(u"QTabWidget::pane"_s, u"margin-top: 6px;"_s);
        row(u"QTabWidget::tab-bar"_s, u"left: 12px;"_s);
        const QString tab = u"QTabBar::tab"_s;
        row(tab, surface);
        row(tab, border);
        row(tab, u"color: #8FA7B6;"_s);
        row(tab, u"border-top-left-radius: 12px;"_s);
        row(tab, u"border-top-right-radius: 12px;"_s);
        row(tab, u"padding: 8px 16px;"_s);
        row(tab, u"margin-right: 6px;"_s);
        const QString selectedTab = u"QTabBar::tab:selected"_s;
        row(selectedTab, u"background: qlineargradient(x1: 0, y1: 0, x2: 1, y2: 1,"_s);
        row(selectedTab, u"border: 1px solid rgba(110, 200, 215, 80);"_s);
        row(selectedTab, text);
    }
    void eachPartHasItsLook()
    {
        QFETCH(const QString, selector);
        QFETCH(const QString, declaration);
        const QString declarations = declarationsFor(shellSheet(), selector);
        QVERIFY2(declarations.contains(declaration), qPrintable(declarations));
    }

    void theSheetIsOnTheShell()
    {
        const ManetteConfigurationWidget shell;
        QCOMPARE(shell.styleSheet(), shellSheet());
    }

    void theBackdropShowsThroughFromLightToDark()
    {
        ManetteConfigurationWidget shell;
        shell.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shell));
        const QImage picture = shell.grab().toImage();
        const QColor top = picture.pixelColor(picture.width() / 2, 3);
        const QColor bottom = picture.pixelColor(3, picture.height() - 3);
        QVERIFY2(top.lightness() > bottom.lightness() + 10, qPrintable(top.name() + bottom.name()));
        QVERIFY(bottom.lightness() < 40);
    }
};

GAMEPAD_TEST_MAIN(TestShellSheet)
#include "tst_shellsheet.moc"
