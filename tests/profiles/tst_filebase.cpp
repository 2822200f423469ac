// SPDX-License-Identifier: MIT
#include "filebase.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

class TestFileBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aNameBecomesABase_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("base");
        QTest::newRow("plain") << u"Manette 2-b_c"_s << u"Manette 2-b_c"_s;
        QTest::newRow("slash and accent") << u"a/é"_s << u"a__"_s;
        QTest::newRow("asterisks") << u"***"_s << u"___"_s;
        QTest::newRow("blanks") << u"   "_s << u"Gamepad"_s;
        QTest::newRow("nothing") << QString() << u"Gamepad"_s;
        QTest::newRow("blanks around") << u"  pad\t"_s << u"pad"_s;
        QTest::newRow("a line feed within") << u"a\nb"_s << u"a\nb"_s;
        QTest::newRow("dots") << u".."_s << u"__"_s;
        QTest::newRow("way out") << u"../../etc/passwd"_s << u"______etc_passwd"_s;
        QTest::newRow("backslash and drive") << u"C:\\x"_s << u"C__x"_s;
        QTest::newRow("NUL") << QString(u"a"_s + QChar(u'\0') + u'b') << u"a_b"_s;
        QTest::newRow("beyond 16 bits") << u"a\U0001F3AEb"_s << u"a_b"_s;
        QTest::newRow("64") << QString(64, u'x') << QString(64, u'x');
        QTest::newRow("100") << QString(100, u'x') << QString(64, u'x');
        QTest::newRow("10,000") << QString(10'000, u'/') << QString(64, u'_');
    }

    void aNameBecomesABase()
    {
        QFETCH(const QString, name);
        QTEST(sanitizedFileBase(name), "base");
    }

    // Documents can hold it, and a pattern matches nothing in such a text.
    void halfASurrogatePairDoesNotLetAPathThrough()
    {
        for (const QChar half : {QChar(0xD83C), QChar(0xDFAE)}) {
            const QString base = sanitizedFileBase(half + u"/../x"_s + half);
            QVERIFY2(!base.contains(u'/') && !base.contains(u'.'), qPrintable(base));
            QVERIFY(base.contains(u'x'));
        }
    }
};

GAMEPAD_TEST_MAIN(TestFileBase)
#include "tst_filebase.moc"
