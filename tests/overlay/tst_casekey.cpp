// SPDX-License-Identifier: MIT
#include "casekey.h"

#include "testmain.h"

#include <QtCore/QSet>

using namespace Qt::StringLiterals;

class TestCaseKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void keysAreEqualWhereTheComparisonIs_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("equal");

        QTest::newRow("same") << u"joy_1"_s << u"joy_1"_s << true;
        QTest::newRow("case") << u"Joy_1"_s << u"jOY_1"_s << true;
        QTest::newRow("accents") << u"GÂCHETTE"_s << u"gâchette"_s << true;
        QTest::newRow("an accent counts") << u"gachette"_s << u"gâchette"_s << false;
        QTest::newRow("final sigma") << u"ΣΑΣ"_s << u"σας"_s << true;
        QTest::newRow("capital sharp s") << u"ẞ"_s << u"ß"_s << true;
        QTest::newRow("sharp s is no double s") << u"ß"_s << u"ss"_s << false;
        QTest::newRow("Deseret, beyond 16 bits") << u"\U00010400x"_s << u"\U00010428X"_s << true;
        QTest::newRow("blanks count") << u"a "_s << u"a"_s << false;
        QTest::newRow("empty") << QString() << u""_s << true;
        QTest::newRow("half a character") << QString(QChar(0xd801)) << QString(QChar(0xd802)) << false;
    }

    void keysAreEqualWhereTheComparisonIs()
    {
        QFETCH(const QString, a);
        QFETCH(const QString, b);
        QFETCH(const bool, equal);
        QCOMPARE(equalWithoutCase(a, b), equal);
        QCOMPARE(caseKey(a) == caseKey(b), equal);
    }

    void everyCharacterHasTheKeyOfThoseThatCompareEqual()
    {
        // All of the first plane against its lower, upper and title case.
        for (int code = 1; code < 0x10000; ++code) {
            const QString text(QChar(static_cast<char16_t>(code)));
            if (text[0].isSurrogate())
                continue;
            for (const QString &other : {text.toLower(), text.toUpper(), QString(text[0].toTitleCase())}) {
                if ((caseKey(text) == caseKey(other)) != equalWithoutCase(text, other))
                    QFAIL(qPrintable(u"U+%1 and %2"_s.arg(code, 4, 16).arg(other)));
            }
        }
    }
};

GAMEPAD_TEST_MAIN(TestCaseKey)
#include "tst_casekey.moc"
