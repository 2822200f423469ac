// SPDX-License-Identifier: MIT
#include "testmain.h"

#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>

using namespace Qt::StringLiterals;

/// What a loader reads of the plugin file before it runs any of its code.
class TestPluginMetadata : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void identityIsTheContractsAndTheRecordedQtIs69()
    {
        const QPluginLoader loader(QStringLiteral(GAMEPAD_PLUGIN));
        const QJsonObject metaData = loader.metaData();
        QCOMPARE(metaData.value("IID"_L1).toString(), u"fr.velor.IComInterfaceModelProvider/1.0"_s);
        QCOMPARE(metaData.value("className"_L1).toString(), u"GamepadComPlugin"_s);
        QCOMPARE(metaData.value("version"_L1).toInt(), 0x060900);
        QVERIFY(!loader.isLoaded());
    }

    void thereIsNoFurtherMetadataDocument()
    {
        const QJsonObject metaData = QPluginLoader(QStringLiteral(GAMEPAD_PLUGIN)).metaData();
        QVERIFY(metaData.value("MetaData"_L1).toObject().isEmpty());
        QStringList keys = metaData.keys();
        keys.removeOne(u"MetaData"_s); // the loader's own place for such a document, empty here
        // "archlevel" and "debug" are the loader's reading of the header.
        QCOMPARE(keys, (QStringList{u"IID"_s, u"archlevel"_s, u"className"_s, u"debug"_s, u"version"_s}));
    }
};

GAMEPAD_TEST_MAIN(TestPluginMetadata)
#include "tst_pluginmetadata.moc"
