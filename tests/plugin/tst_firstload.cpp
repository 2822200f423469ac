// SPDX-License-Identifier: MIT
// What the plugin brings into a process that knows nothing of it: no class, type or resource of its own name.
#include "testmain.h"

#include <QtCore/QDirIterator>
#include <QtCore/QIterable>
#include <QtCore/QMetaSequence>
#include <QtCore/QPluginLoader>
#include <QtCore/QSet>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
const QList<QByteArray> &contractTypes()
{
    static const QList<QByteArray> names{"IComInterface::ComStatus", "IComInterface::DeviceType",
                                         "IComInterface*", "QList<IComInterface*>"};
    return names;
}

QSet<QString> allResources()
{
    QSet<QString> paths;
    QDirIterator files(u":/"_s, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.insert(files.next());
    return paths;
}
} // namespace

class TestFirstLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        failOnUnexpectedWarnings();
        for (const QByteArray &name : contractTypes())
            QVERIFY2(!QMetaType::fromName(name).isValid(), name.constData());
        m_resourcesBefore = allResources();
        QPluginLoader loader(QStringLiteral(GAMEPAD_PLUGIN));
        QVERIFY2(loader.load(), qPrintable(loader.errorString()));
        m_resourcesAtLoad = allResources();
        QVERIFY(loader.instance());
    }
    void init() { failOnUnexpectedWarnings(); }

    void theContractsTypesAreKnownByName_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QMetaType::TypeFlags>("flags");
        QTest::addColumn<bool>("isListed");
        QTest::newRow("status") << contractTypes().at(0) << QMetaType::TypeFlags(QMetaType::IsEnumeration)
                                << true;
        QTest::newRow("device type") << contractTypes().at(1)
                                     << QMetaType::TypeFlags(QMetaType::IsEnumeration) << true;
        QTest::newRow("interface") << contractTypes().at(2)
                                   << QMetaType::TypeFlags(QMetaType::PointerToQObject) << true;
        QTest::newRow("interfaces") << contractTypes().at(3) << QMetaType::TypeFlags() << false;
    }
    void theContractsTypesAreKnownByName()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QMetaType::TypeFlags, flags);
        QFETCH(const bool, isListed);
        const QMetaType type = QMetaType::fromName(name);
        QVERIFY(type.isValid());
        QCOMPARE(QByteArray(type.name()), name);
        QCOMPARE(type.flags() & flags, flags);
        QCOMPARE(type.metaObject() != nullptr, isListed);
        if (type.metaObject())
            QCOMPARE(type.metaObject()->className(), "IComInterface");
    }

    void theListOfInterfacesIsASequence()
    {
        const QMetaType list = QMetaType::fromName("QList<IComInterface*>");
        QVERIFY(
            QMetaType::hasRegisteredConverterFunction(list, QMetaType::fromType<QIterable<QMetaSequence>>()));
        QVERIFY(QVariant(list).canConvert<QVariantList>());
    }

    void theWholeLibraryBringsFourResources()
    {
        const QSet<QString> brought = allResources() - m_resourcesBefore;
        QCOMPARE(
            brought,
            (QSet<QString>{u":/icon/ressources/arrow-down.svg"_s, u":/icon/ressources/arrow-up.svg"_s,
                           u":/icon/ressources/close-red.svg"_s, u":/icon/ressources/console-video.png"_s}));
        // There from the load on, before there is a plugin object.
        QCOMPARE(m_resourcesAtLoad - m_resourcesBefore, brought);
        QVERIFY((m_resourcesBefore - allResources()).isEmpty());
    }

private:
    QSet<QString> m_resourcesBefore;
    QSet<QString> m_resourcesAtLoad;
};

GAMEPAD_TEST_MAIN(TestFirstLoad)
#include "tst_firstload.moc"
