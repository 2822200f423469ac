// SPDX-License-Identifier: MIT
#include "backgroundscalemode.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

class TestBackgroundScaleMode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void eachModeHasItsNumberAndItsName_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<BackgroundScaleMode>("mode");
        QTest::addColumn<QString>("name");
        QTest::newRow("stretch") << 0 << BackgroundScaleMode::Stretch << u"Stretch"_s;
        QTest::newRow("contain") << 1 << BackgroundScaleMode::Contain << u"Contain"_s;
        QTest::newRow("cover") << 2 << BackgroundScaleMode::Cover << u"Cover"_s;
        QTest::newRow("center") << 3 << BackgroundScaleMode::Center << u"Center"_s;
    }

    void eachModeHasItsNumberAndItsName()
    {
        QFETCH(const int, number);
        QFETCH(const BackgroundScaleMode, mode);
        QFETCH(const QString, name);
        QCOMPARE(static_cast<int>(mode), number);
        QCOMPARE(scaleModeName(mode), name);
        QCOMPARE(parseScaleMode(name), mode);
    }

    void aValueOutsideTheEnumerationIsCalledContain()
    {
        QCOMPARE(scaleModeName(static_cast<BackgroundScaleMode>(4)), u"Contain"_s);
        QCOMPARE(scaleModeName(static_cast<BackgroundScaleMode>(-1)), u"Contain"_s);
    }

    void aNameIsReadWithoutCaseAndBlanks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<BackgroundScaleMode>("mode");
        QTest::newRow("upper case") << u"STRETCH"_s << BackgroundScaleMode::Stretch;
        QTest::newRow("lower case") << u"cover"_s << BackgroundScaleMode::Cover;
        QTest::newRow("blanks") << u" \tCenter\n"_s << BackgroundScaleMode::Center;
        QTest::newRow("mixed") << u"sTreTch "_s << BackgroundScaleMode::Stretch;
        QTest::newRow("empty") << QString() << BackgroundScaleMode::Contain;
        QTest::newRow("unknown") << u"tile"_s << BackgroundScaleMode::Contain;
        QTest::newRow("a prefix alone") << u"cov"_s << BackgroundScaleMode::Contain;
        QTest::newRow("more than a name") << u"cover all"_s << BackgroundScaleMode::Contain;
        QTest::newRow("a number") << u"2"_s << BackgroundScaleMode::Contain;
    }

    void aNameIsReadWithoutCaseAndBlanks()
    {
        QFETCH(const QString, text);
        QTEST(parseScaleMode(text), "mode");
    }
};

GAMEPAD_TEST_MAIN(TestBackgroundScaleMode)
#include "tst_backgroundscalemode.moc"
