// SPDX-License-Identifier: MIT
// Names and pictures of profiles, changed as a person does it.
#include "dialogs.h"
#include "editorfilestest.h"
#include "editorstage.h"
#include "exchangefiles.h"
#include "interactiveoverlay.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
QString askName(const QString &name)
{
    return "Input: Renommer: Nouveau nom :: "_L1 + name;
}

const QString askPicture = u"File: Choisir une nouvelle image: Images (*.png *.jpg *.jpeg *.bmp)"_s;

QString metaFailure(const QString &title, const QString &folder)
{
    const QString error = u"Impossible dâ€™Ã©crire %1"_s.arg(folder + "/meta.json"_L1);
    return u"Warning: %1: "_s.arg(title) + u"Impossible dâ€™Ã©crire meta.json : %1"_s.arg(error);
}

QString itemText(const GamepadDefinder &editor)
{
    return stage::listOf(editor).item(0)->text();
}

QColor iconColour(const GamepadDefinder &editor)
{
    const QSize size = stage::listOf(editor).iconSize();
    return stage::listOf(editor).item(0)->icon().pixmap(size).toImage().pixelColor(size.width() / 2,
                                                                                   size.height() / 2);
}

QColor backgroundColour(const GamepadDefinder &editor)
{
    const QImage background = stage::overlayOf(editor).backgroundPixmap().toImage();
    return background.isNull() ? QColor() : background.pixelColor(5, 5);
}

/// JPEG keeps colours only roughly.
bool isRed(const QColor &colour)
{
    return colour.red() > 240 && colour.green() < 15 && colour.blue() < 15;
}
} // namespace

class TestEditorChanges : public EditorFilesTest
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAProfileNothingIsAsked()
    {
        GamepadDefinder editor;
        Dialogs dialogs;
        editor.actionRename();
        editor.actionChangeImage();
        editor.actionDelete();
        QCOMPARE(dialogs.take(), QStringList());
    }

    void aNewNameIsTrimmed()
    {
        const QString folder = stage::store(1, {.name = u"Old"_s});
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::type(u"  New/name  "_s)});
        editor.actionRename();
        QCOMPARE(dialogs.take(), QStringList({askName(u"Old"_s)}));
        QCOMPARE(editor.entries().first().name, u"New/name"_s);
        QCOMPARE(editor.entries().first().dirPath, folder);
        QCOMPARE(itemText(editor), u"New/name"_s);
        QCOMPARE(stage::metaIn(folder)["name"_L1].toString(), u"New/name"_s);
        QCOMPARE(stage::metaIn(folder).size(), 9);
        QVERIFY(!stage::metaIn(folder).contains("createdAt"_L1));
        QVERIFY(QDir(folder).exists());
    }

    void aBlankOrGivenUpNameChangesNothing_data()
    {
        QTest::addColumn<bool>("typed");
        QTest::newRow("blank") << true;
        QTest::newRow("given up") << false;
    }

    void aBlankOrGivenUpNameChangesNothing()
    {
        QFETCH(const bool, typed);
        const QString folder = stage::store(1, {.name = u"Old"_s});
        const QByteArray meta = bytesIn(folder + "/meta.json"_L1);
        GamepadDefinder editor;
        Dialogs dialogs({typed ? Dialogs::type(u"   "_s) : Dialogs::escape()});
        editor.actionRename();
        QCOMPARE(dialogs.take(), QStringList({askName(u"Old"_s)}));
        QCOMPARE(bytesIn(folder + "/meta.json"_L1), meta);
        QCOMPARE(itemText(editor), u"Old"_s);
    }

    void aNameThatCannotBeWrittenStaysInMemoryAlone()
    {
        const QString folder = stage::store(1, {.name = u"Old"_s});
        GamepadDefinder editor;
        {
            const stage::BlockedFile block(folder + "/meta.json"_L1);
            Dialogs dialogs({Dialogs::type(u"New"_s), Dialogs::ok()});
            editor.actionRename();
            QCOMPARE(dialogs.take(), QStringList({askName(u"Old"_s), metaFailure(u"Renommer"_s, folder)}));
        }
        QCOMPARE(editor.entries().first().name, u"New"_s);
        QCOMPARE(itemText(editor), u"Old"_s);
        QCOMPARE(stage::metaIn(folder)["name"_L1].toString(), u"Old"_s);
    }

    void aNewPictureIsShownEverywhere()
    {
        const QString folder = stage::store(1);
        GamepadDefinder editor;
        QCOMPARE(iconColour(editor), QColor(Qt::blue));
        Dialogs dialogs({Dialogs::choose(picture(u"new.JPG"_s))});
        editor.actionChangeImage();
        QCOMPARE(dialogs.take(), QStringList({askPicture}));
        QCOMPARE(editor.entries().first().imagePath, folder + "/image.jpg"_L1);
        QVERIFY(isRed(iconColour(editor)));
        QVERIFY(isRed(backgroundColour(editor)));
        QCOMPARE(stage::metaIn(folder)["image"_L1].toString(), u"image.jpg"_s);
        QCOMPARE(stage::metaIn(folder).size(), 9);
        QVERIFY(QFile::exists(folder + "/image.png"_L1)); // for good
    }

    void aPictureOfTheSameNameIsShownToo()
    {
        const QString folder = stage::store(1);
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::choose(picture(u"new.png"_s))});
        editor.actionChangeImage();
        QCOMPARE(editor.entries().first().imagePath, folder + "/image.png"_L1);
        QCOMPARE(iconColour(editor), QColor(Qt::red));
        QCOMPARE(backgroundColour(editor), QColor(Qt::red));
    }

    void whatIsNoPictureIsTakenAndShownAsMissing()
    {
        const QString folder = stage::store(1);
        const QString text = temporaryHome() + "/data/text.png"_L1;
        write(text, "no picture");
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::choose(text)});
        editor.actionChangeImage();
        QCOMPARE(dialogs.take(), QStringList({askPicture}));
        QCOMPARE(bytesIn(folder + "/image.png"_L1), "no picture");
        QVERIFY(stage::overlayOf(editor).backgroundPixmap().isNull());
    }

    void whoGivesUpKeepsThePicture()
    {
        const QString folder = stage::store(1);
        const QByteArray meta = bytesIn(folder + "/meta.json"_L1);
        GamepadDefinder editor;
        Dialogs dialogs({Dialogs::escape()});
        editor.actionChangeImage();
        QCOMPARE(dialogs.take(), QStringList({askPicture}));
        QCOMPARE(bytesIn(folder + "/meta.json"_L1), meta);
        QCOMPARE(iconColour(editor), QColor(Qt::blue));
    }

    void aPictureThatVanishedChangesNothing()
    {
        const QString folder = stage::store(1);
        const QByteArray meta = bytesIn(folder + "/meta.json"_L1);
        const QString chosen = picture(u"new.png"_s);
        GamepadDefinder editor;
        Dialogs dialogs({[&](QWidget *dialog) {
                             // It goes at the moment of the acceptance.
                             connect(qobject_cast<QFileDialog *>(dialog), &QFileDialog::accepted, this,
                                     [&] { QFile::remove(chosen); });
                             Dialogs::choose(chosen)(dialog);
                         },
                         Dialogs::ok()});
        editor.actionChangeImage();
        const QString message =
            u"Impossible de copier lâ€™image %1 vers %2"_s.arg(chosen, folder + "/image.png"_L1);
        QCOMPARE(dialogs.take(), QStringList({askPicture, "Warning: Image: "_L1 + message}));
        QCOMPARE(bytesIn(folder + "/meta.json"_L1), meta);
        QCOMPARE(QImage(folder + "/image.png"_L1).pixelColor(5, 5), QColor(Qt::blue));
        QCOMPARE(iconColour(editor), QColor(Qt::blue));
        QCOMPARE(backgroundColour(editor), QColor(Qt::blue));
    }

    void aPictureThatMetaCannotTellIsShownAllTheSame()
    {
        const QString folder = stage::store(1);
        GamepadDefinder editor;
        {
            const stage::BlockedFile block(folder + "/meta.json"_L1);
            Dialogs dialogs({Dialogs::choose(picture(u"new.bmp"_s)), Dialogs::ok()});
            editor.actionChangeImage();
            QCOMPARE(dialogs.take(), QStringList({askPicture, metaFailure(u"Image"_s, folder)}));
        }
        QCOMPARE(editor.entries().first().imagePath, folder + "/image.bmp"_L1);
        QCOMPARE(iconColour(editor), QColor(Qt::red));
        QCOMPARE(backgroundColour(editor), QColor(Qt::red));
        QCOMPARE(stage::metaIn(folder)["image"_L1].toString(), u"image.png"_s);
    }
};

GAMEPAD_TEST_MAIN(TestEditorChanges)
#include "tst_editorchanges.moc"
