// SPDX-License-Identifier: MIT
#include "storenotices.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

class TestStoreNotices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void eachFailureHasItsBox_data()
    {
        QTest::addColumn<StoreStep>("step");
        QTest::addColumn<QMessageBox::Icon>("icon");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text"); // of the error "E %1"
        const auto row = [](const char *name, StoreStep step, const QString &title, const QString &text) {
            QTest::newRow(name) << step << QMessageBox::Warning << title << text;
        };
        const auto critical = [](const char *name, StoreStep step, const QString &text) {
            QTest::newRow(name) << step << QMessageBox::Critical << u"Sauvegarde"_s << text;
        };
        row("create, picture", StoreStep::CreatePicture, u"CrÃ©ation"_s, u"E %1"_s);
        row("create, overlay", StoreStep::CreateOverlay, u"CrÃ©ation"_s,
            u"Impossible dâ€™Ã©crire la configuration par dÃ©faut : %1"_s.arg(u"E %1"_s));
        row("create, meta", StoreStep::CreateMeta, u"CrÃ©ation"_s,
            u"Impossible dâ€™Ã©crire meta.json : %1"_s.arg(u"E %1"_s));
        row("create, mapping", StoreStep::CreateMapping, u"Creation"_s, u"Echec ecriture mapping : E %1"_s);
        critical("save, overlay", StoreStep::SaveOverlay, u"Ã‰chec sauvegarde config : %1"_s.arg(u"E %1"_s));
        critical("save, mapping", StoreStep::SaveMapping, u"Echec sauvegarde mapping : E %1"_s);
        critical("save, meta", StoreStep::SaveMeta, u"Ã‰chec sauvegarde meta : %1"_s.arg(u"E %1"_s));
        row("duplicate, picture", StoreStep::DuplicatePicture, u"Dupliquer"_s, u"E %1"_s);
        row("duplicate, overlay", StoreStep::DuplicateOverlay, u"Dupliquer"_s,
            u"Impossible de copier la configuration."_s);
        row("duplicate, mapping copy", StoreStep::DuplicateMappingCopy, u"Dupliquer"_s,
            u"Echec copie mapping : E %1"_s);
        row("duplicate, default mapping", StoreStep::DuplicateDefaultMapping, u"Dupliquer"_s,
            u"Echec ecriture mapping : E %1"_s);
        row("duplicate, meta", StoreStep::DuplicateMeta, u"Dupliquer"_s,
            u"Impossible dâ€™Ã©crire meta.json : %1"_s.arg(u"E %1"_s));
        row("rename, meta", StoreStep::RenameMeta, u"Renommer"_s,
            u"Impossible dâ€™Ã©crire meta.json : %1"_s.arg(u"E %1"_s));
        row("change image, picture", StoreStep::ImagePicture, u"Image"_s, u"E %1"_s);
        row("change image, meta", StoreStep::ImageMeta, u"Image"_s,
            u"Impossible dâ€™Ã©crire meta.json : %1"_s.arg(u"E %1"_s));
    }

    void eachFailureHasItsBox()
    {
        QFETCH(const StoreStep, step);
        const StoreNotice notice = noticeOf({.step = step, .error = u"E %1"_s});
        QTEST(notice.icon, "icon");
        QTEST(notice.title, "title");
        QTEST(notice.text, "text");
    }

    void aTakenGamepadHasItsBox()
    {
        QCOMPARE(deviceTakenNotice(),
                 (StoreNotice{.icon = QMessageBox::Warning,
                              .title = u"Association"_s,
                              .text = u"Cette manette est dÃ©jÃ  associÃ©e Ã  un autre profil."_s}));
    }
};

GAMEPAD_TEST_MAIN(TestStoreNotices)
#include "tst_storenotices.moc"
