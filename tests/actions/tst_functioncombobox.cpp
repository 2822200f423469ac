// SPDX-License-Identifier: MIT
#include "functioncombobox.h"

#include "functionlistmodel.h"
#include "longtext.h"

#include "entries.h"
#include "testmain.h"

#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QAbstractItemView>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray shortNames()
{
    return {function(u"Tir"_s), function(u"Vol"_s)};
}

QJsonArray longNames()
{
    return {function(u"une_fonction_au_nom_vraiment_tres_long"_s, {param(u"vitesse"_s, u"double"_s)})};
}

// A combo of the kind under test beside one of Qt's own with the same entries.
class TwoCombos
{
public:
    TwoCombos(QComboBox::SizeAdjustPolicy policy, int minimumLength, const QString &sheet)
    {
        m_window.setStyleSheet(sheet);
        for (QComboBox *combo : {static_cast<QComboBox *>(m_ours), m_qts}) {
            combo->setSizeAdjustPolicy(policy);
            combo->setMinimumContentsLength(minimumLength);
        }
    }

    void list(const QJsonArray &catalogue)
    {
        m_model.clear();
        m_model.setCatalogue(FunctionCatalogue::read(catalogue, toolBoxTraits));
        m_qts->clear();
        QStringList texts;
        for (int row = 0; row < m_model.rowCount(); ++row)
            texts.append(m_model.index(row).data().toString());
        m_qts->addItems(texts);
    }

    void show()
    {
        m_window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&m_window));
    }

    void compare() { QCOMPARE(m_ours->sizeHint(), m_qts->sizeHint()); }

    // Qt measures the minimum once in a combo's life: a later comparison is one with the past.
    void compareMinimum() { QCOMPARE(m_ours->minimumSizeHint(), m_qts->minimumSizeHint()); }

    QWidget &window() { return m_window; }

private:
    FunctionListModel m_model{toolBoxTraits};
    QWidget m_window;
    FunctionComboBox *m_ours = new FunctionComboBox(&m_model, &m_window);
    QComboBox *m_qts = new QComboBox(&m_window);
};
} // namespace

class TestFunctionComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void itsHintsAreThoseOfAnyCombo_data()
    {
        QTest::addColumn<QComboBox::SizeAdjustPolicy>("policy");
        QTest::addColumn<int>("minimumLength");
        QTest::addColumn<QString>("sheet");
        const QString sheet = u"QComboBox { padding: 5px 8px; border: 1px solid red; min-height: 28px; }"_s;
        QTest::newRow("of tool boxes") << QComboBox::AdjustToContentsOnFirstShow << 0 << QString();
        QTest::newRow("of tool boxes, with a sheet") << QComboBox::AdjustToContentsOnFirstShow << 0 << sheet;
        QTest::newRow("of cards") << QComboBox::AdjustToContents << 28 << QString();
        QTest::newRow("of cards, with a sheet") << QComboBox::AdjustToContents << 28 << sheet;
    }

    void itsHintsAreThoseOfAnyCombo()
    {
        QFETCH(QComboBox::SizeAdjustPolicy, policy);
        QFETCH(int, minimumLength);
        QFETCH(QString, sheet);
        TwoCombos combos(policy, minimumLength, sheet);
        combos.compare();
        combos.list(shortNames());
        combos.compare();
        combos.show();
        combos.compare();
        combos.list(longNames());
        combos.compare();
        combos.list({});
        combos.compare();
        QFont font = combos.window().font();
        font.setPixelSize(22);
        combos.window().setFont(font);
        combos.compare();
        combos.list(longNames());
        combos.compare();
    }

    void itsMinimumIsThatOfAnyCombo_data() { itsHintsAreThoseOfAnyCombo_data(); }

    void itsMinimumIsThatOfAnyCombo()
    {
        QFETCH(QComboBox::SizeAdjustPolicy, policy);
        QFETCH(int, minimumLength);
        QFETCH(QString, sheet);
        TwoCombos combos(policy, minimumLength, sheet);
        combos.list(longNames());
        combos.compareMinimum();
    }

    void aSelectionIsAFunctionsIndex()
    {
        FunctionListModel model(toolBoxTraits);
        FunctionComboBox combo(&model);
        QCOMPARE(combo.functionIndex(), -1);
        combo.selectFunction(0);
        QCOMPARE(combo.currentIndex(), -1);
        model.setCatalogue(FunctionCatalogue::read(shortNames(), toolBoxTraits));
        QCOMPARE(combo.currentIndex(), 0);
        QCOMPARE(combo.functionIndex(), -1);
        combo.selectFunction(1);
        QCOMPARE(combo.currentIndex(), 2);
        QCOMPARE(combo.functionIndex(), 1);
        combo.selectFunction(-1);
        QCOMPARE(combo.currentIndex(), 0);
        combo.setCurrentIndex(-1);
        QCOMPARE(combo.functionIndex(), -1);
    }

    void withoutDataTheRowCounts()
    {
        FunctionListModel model(toolBoxTraits);
        FunctionComboBox combo(&model);
        QComboBox donor;
        donor.addItem(u"without data"_s);
        donor.addItem(u"without data"_s);
        donor.addItem(u"far below"_s, -7);
        combo.setModel(donor.model());
        combo.setCurrentIndex(1);
        QCOMPARE(combo.functionIndex(), 1);
        combo.setCurrentIndex(2);
        QCOMPARE(combo.functionIndex(), -1);
    }

    void aNewListIsToldAsClearingAndFilling()
    {
        FunctionListModel model(taskBlockTraits);
        FunctionComboBox combo(&model);
        QComboBox plain;
        QSignalSpy ours(&combo, &QComboBox::currentIndexChanged);
        QSignalSpy qts(&plain, &QComboBox::currentIndexChanged);
        for (int time = 0; time < 2; ++time) {
            model.clear();
            model.setCatalogue(FunctionCatalogue::read(shortNames(), taskBlockTraits));
            plain.clear();
            plain.addItems({u"Choisir une action"_s, u"Tir()"_s, u"Vol()"_s});
            combo.setCurrentIndex(2);
            plain.setCurrentIndex(2);
            QCOMPARE(QList<QVariantList>(ours), QList<QVariantList>(qts));
        }
    }

    void combosOfOneCatalogueShareItsEntriesAndHaveOneHint()
    {
        QJsonArray many;
        for (int i = 0; i < 1000; ++i)
            many.append(function(u"fonction_%1"_s.arg(i), {param(u"vitesse"_s, u"double"_s)}));
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(FunctionCatalogue::shared(many, toolBoxTraits));
        FunctionComboBox first(&model);
        const QSize hint = first.sizeHint();
        FunctionListModel another(toolBoxTraits);
        another.setCatalogue(FunctionCatalogue::shared(many, toolBoxTraits));
        QCOMPARE(&another.catalogue().functions(), &model.catalogue().functions());
        const FunctionComboBox second(&another);
        QCOMPARE(second.sizeHint(), hint);
    }

    void theWheelChangesOnlyAComboThatHasTheFocus()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(FunctionCatalogue::read(shortNames(), toolBoxTraits));
        QWidget window;
        FunctionComboBox combo(&model, &window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QPoint centre = combo.mapTo(&window, combo.rect().center());
        window.setFocus();
        QTest::wheelEvent(window.windowHandle(), centre, QPoint(0, -120));
        QCOMPARE(combo.currentIndex(), 0);
        QVERIFY(!combo.hasFocus());
        combo.setFocus();
        QTest::wheelEvent(window.windowHandle(), centre, QPoint(0, -120));
        QCOMPARE(combo.currentIndex(), 1);
    }

    void theListIsAsWideAsItsEntriesNeed()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(FunctionCatalogue::read(longNames(), toolBoxTraits));
        QWidget window;
        window.setStyleSheet(u"QComboBox { combobox-popup: 0; }"_s); // a list, not a menu
        window.resize(300, 60);
        FunctionComboBox combo(&model, &window);
        combo.resize(100, 28);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        combo.showPopup();
        QTRY_VERIFY(combo.view()->isVisible());
        const int needed = combo.fontMetrics().boundingRect(combo.itemText(1)).width();
        QVERIFY(needed > combo.width());
        QVERIFY(combo.view()->viewport()->width() >= needed);
        combo.hidePopup();
    }

    void aSignatureThatFillsADocumentIsMeasuredByItsBeginning()
    {
        const QString endless(10'000'000, u'w');
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(FunctionCatalogue::read({function(endless)}, toolBoxTraits));
        FunctionComboBox combo(&model);
        const int widest = combo.sizeHint().width();
        QVERIFY(widest < combo.fontMetrics().horizontalAdvance(endless.first(1000)));
        model.appendUnknown(endless);
        QCOMPARE(combo.sizeHint().width(), widest);
        QCOMPARE(combo.itemText(1), endless);
        QCOMPARE(BeginningDelegate().displayText(endless, QLocale()), beginningOf(endless));
        QVERIFY(beginningOf(endless).size() < 1000);
    }

    void anEndlessSignatureDoesNotFillTheScreen()
    {
        FunctionListModel model(toolBoxTraits);
        model.setCatalogue(FunctionCatalogue::read({function(QString(5000, u'w'))}, toolBoxTraits));
        QWidget window;
        window.setStyleSheet(u"QComboBox { combobox-popup: 0; }"_s); // a list, not a menu
        FunctionComboBox combo(&model, &window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        combo.resize(100, 28);
        combo.showPopup();
        QTRY_VERIFY(combo.view()->isVisible());
        QVERIFY(qobject_cast<BeginningDelegate *>(combo.view()->itemDelegate()));
        QVERIFY(combo.view()->width() <= combo.screen()->availableGeometry().width() / 2);
        combo.hidePopup();
    }
};

GAMEPAD_TEST_MAIN(TestFunctionComboBox)
#include "tst_functioncombobox.moc"
