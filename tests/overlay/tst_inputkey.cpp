// SPDX-License-Identifier: MIT
#include "inputkey.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

class TestInputKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aKeyIsRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isKey");
        QTest::addColumn<bool>("isJoy");
        QTest::addColumn<int>("index");

        QTest::newRow("axis") << u"joy_3"_s << true << true << 3;
        QTest::newRow("button") << u"but_12"_s << true << false << 12;
        QTest::newRow("upper case") << u"JOY_1"_s << true << true << 1;
        QTest::newRow("mixed case") << u"But_4"_s << true << false << 4;
        QTest::newRow("blanks around") << u" \tbut_7\n"_s << true << false << 7;
        QTest::newRow("leading zeros are decimal") << u"joy_010"_s << true << true << 10;
        QTest::newRow("negative") << u"joy_-1"_s << true << true << -1;
        QTest::newRow("greatest int") << u"but_2147483647"_s << true << false << 2147483647;

        QTest::newRow("empty") << QString() << false << true << -1;
        QTest::newRow("blank") << u"   "_s << false << true << -1;
        QTest::newRow("plain word") << u"Tir"_s << false << true << -1;
        QTest::newRow("prefix of an axis alone") << u"joy_"_s << false << true << -1;
        QTest::newRow("prefix of a button alone") << u"but_"_s << false << false << -1;
        QTest::newRow("no underscore") << u"joy3"_s << false << true << -1;
        QTest::newRow("axis with a word") << u"joy_x"_s << false << true << -1;
        QTest::newRow("button with a word") << u"but_x"_s << false << false << -1;
        QTest::newRow("button in capitals with a word") << u" BUT_X "_s << false << false << -1;
        QTest::newRow("beyond int") << u"joy_99999999999"_s << false << true << -1;
        QTest::newRow("just beyond int") << u"but_2147483648"_s << false << false << -1;
        QTest::newRow("hexadecimal") << u"joy_0x10"_s << false << true << -1;
        QTest::newRow("fraction") << u"joy_1.5"_s << false << true << -1;
        QTest::newRow("exponent") << u"but_1e3"_s << false << false << -1;
        QTest::newRow("more behind it") << u"joy_1 joy_2"_s << false << true << -1;
        QTest::newRow("prefix inside") << u"xbut_1"_s << false << true << -1;
    }

    void aKeyIsRead()
    {
        QFETCH(const QString, text);
        QFETCH(const bool, isKey);
        bool isJoy = false;
        int index = 77;
        QCOMPARE(parseInputKey(text, &isJoy, &index), isKey);
        QTEST(isJoy, "isJoy");
        QTEST(index, "index");
    }

    void aKeyIsBuiltFromThePrefixAndTheNumber()
    {
        QCOMPARE(inputKey(true, 3), u"joy_3"_s);
        QCOMPARE(inputKey(false, 12), u"but_12"_s);
        QCOMPARE(inputKey(true, -1), u"joy_-1"_s);
    }
};

GAMEPAD_TEST_MAIN(TestInputKey)
#include "tst_inputkey.moc"
