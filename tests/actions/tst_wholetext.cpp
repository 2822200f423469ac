// SPDX-License-Identifier: MIT
#include "wholetext.h"

#include "testmain.h"

#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;

namespace
{
const QString tooLong = QString(40'000, u'a') + u"end"_s;

/// A line edit on show, with its cursor at the end.
class Line : public QLineEdit
{
public:
    Line()
    {
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }
};
} // namespace

class TestWholeText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aTextThatFitsIsThatOfTheField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QString();
        QTest::newRow("short") << u" a "_s;
        QTest::newRow("as long as fits") << QString(QLineEdit().maxLength(), u'a');
    }

    void aTextThatFitsIsThatOfTheField()
    {
        QFETCH(QString, text);
        QLineEdit edit;
        showWhole(&edit, tooLong);
        showWhole(&edit, text);
        QVERIFY(edit.text() == text);
        QVERIFY(wholeText(&edit) == text);
    }

    void aLongerTextIsShownByItsBeginningAndKeptWhole()
    {
        QLineEdit edit;
        showWhole(&edit, tooLong);
        QVERIFY(edit.text() == tooLong.first(edit.maxLength()));
        QVERIFY(wholeText(&edit) == tooLong);
    }

    void whoListensIsToldOfTheWholeText()
    {
        QLineEdit edit;
        QString told;
        connect(&edit, &QLineEdit::textChanged, &edit, [&] { told = wholeText(&edit); });
        showWhole(&edit, tooLong);
        QVERIFY(told == tooLong);
    }

    void theLastOfTwoTextsThatBeginAlikeCounts()
    {
        QLineEdit edit;
        showWhole(&edit, tooLong);
        showWhole(&edit, tooLong + u'!');
        QVERIFY(wholeText(&edit) == tooLong + u'!');
        showWhole(&edit, tooLong.first(edit.maxLength()));
        QVERIFY(wholeText(&edit) == edit.text());
    }

    void anEditDropsWhatIsNotShown()
    {
        Line line;
        showWhole(&line, tooLong);
        QTest::keyClick(&line, Qt::Key_Backspace);
        QVERIFY(wholeText(&line) == tooLong.first(line.maxLength() - 1));
        QTest::keyClick(&line, Qt::Key_A); // what the beginning of the whole text has there, too
        QVERIFY(wholeText(&line) == tooLong.first(line.maxLength()));
    }

    void anEditThatIsTakenBackDropsNothing()
    {
        Line line;
        showWhole(&line, tooLong);
        QTest::keyClick(&line, Qt::Key_Backspace);
        QTest::keySequence(&line, QKeySequence::Undo);
        QVERIFY(wholeText(&line) == tooLong);
    }

    void aKeyThatAFullFieldRefusesDropsNothing()
    {
        Line line;
        showWhole(&line, tooLong);
        QTest::keyClicks(&line, u"xyz"_s);
        QVERIFY(wholeText(&line) == tooLong);
    }

    void aTextThatTheFieldIsGivenOtherwiseCounts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QString();
        QTest::newRow("short") << u"aaa"_s;
        QTest::newRow("another that fills the field") << QString(QLineEdit().maxLength(), u'b');
    }

    void aTextThatTheFieldIsGivenOtherwiseCounts()
    {
        QFETCH(QString, text);
        QLineEdit edit;
        showWhole(&edit, tooLong);
        edit.setText(text);
        QVERIFY(wholeText(&edit) == text);
    }
};

GAMEPAD_TEST_MAIN(TestWholeText)
#include "tst_wholetext.moc"
