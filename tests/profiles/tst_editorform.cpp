// SPDX-License-Identifier: MIT
// What the editor of profiles is made of, and how its list looks.
#include "editorstage.h"
#include "interactiveoverlay.h"
#include "profileicon.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
QImage iconIn(const GamepadDefinder &editor, int row)
{
    return listOf(editor).item(row)->icon().pixmap(QSize(200, 140)).toImage();
}

QImage iconOfPicture(const QString &path, bool live)
{
    return makeItemIcon(path, QSize(200, 140), live).pixmap(QSize(200, 140)).toImage();
}

QStringList methodsOf(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == type)
            names.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    return names;
}
} // namespace

class TestEditorForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    void theFormIsLaidOutInAGrid()
    {
        const Pads pads;
        const GamepadDefinder editor;
        QCOMPARE(editor.objectName(), u"GamepadDefinder"_s);
        QCOMPARE(editor.windowTitle(), u"Form"_s);
        QCOMPARE(editor.size(), QSize(1156, 479));

        auto *grid = qobject_cast<QGridLayout *>(editor.layout());
        QVERIFY(grid);
        QCOMPARE(grid->objectName(), u"gridLayout"_s);
        QCOMPARE(grid->count(), 4);
        const auto placeOf = [grid](QWidget *widget) {
            int row = -1;
            int column = -1;
            int rows = -1;
            int columns = -1;
            grid->getItemPosition(grid->indexOf(widget), &row, &column, &rows, &columns);
            return QList{row, column, rows, columns};
        };
        auto *add = editor.findChild<QPushButton *>(u"pushButtonAdd"_s);
        QVERIFY(add);
        QCOMPARE(add->text(), u"+"_s);
        QCOMPARE(placeOf(add), (QList{0, 0, 1, 1}));
        QCOMPARE(placeOf(&listOf(editor)), (QList{2, 0, 2, 1}));
        QCOMPARE(listOf(editor).maximumWidth(), 200);
        QCOMPARE(placeOf(&comboOf(editor)), (QList{2, 1, 1, 1}));
        QVERIFY(!comboOf(editor).isEditable());
        QCOMPARE(placeOf(&overlayOf(editor)), (QList{3, 1, 1, 1}));
        QCOMPARE(overlayOf(editor).minimumWidth(), 400);
        QCOMPARE(overlayOf(editor).mode(), InteractiveOverlay::Edit);
        QCOMPARE(overlayOf(editor).backgroundScaleMode(), OverlayLines::BackgroundScaleMode::Contain);
    }

    void theListIsAGridOfPictures()
    {
        const Pads pads;
        const GamepadDefinder editor;
        const QListWidget &list = listOf(editor);
        QCOMPARE(list.count(), 0);
        QCOMPARE(list.viewMode(), QListView::IconMode);
        QCOMPARE(list.iconSize(), QSize(200, 140));
        QCOMPARE(list.gridSize(), QSize(220, 190));
        QCOMPARE(list.resizeMode(), QListView::Adjust);
        QCOMPARE(list.movement(), QListView::Static);
        QVERIFY(list.isWrapping());
        QVERIFY(list.uniformItemSizes());
        QCOMPARE(list.selectionMode(), QAbstractItemView::SingleSelection);
        QCOMPARE(list.contextMenuPolicy(), Qt::CustomContextMenu);
    }

    void theTimersAreSingleShots()
    {
        const Pads pads;
        const GamepadDefinder editor;
        QVERIFY(saveTimerOf(editor).isSingleShot());
        QCOMPARE(saveTimerOf(editor).interval(), 250);
        QVERIFY(!saveTimerOf(editor).isActive());
        QVERIFY(triggerTimerOf(editor).isSingleShot());
        QCOMPARE(triggerTimerOf(editor).interval(), 200);
        QVERIFY(!triggerTimerOf(editor).isActive());
    }

    void signalsAndSlotsStandInTheirOrder()
    {
        const QMetaObject &meta = GamepadDefinder::staticMetaObject;
        QCOMPARE(methodsOf(meta, QMetaMethod::Signal),
                 (QStringList{u"realGamepadsChanged()"_s, u"deviceSelectionChanged(QString)"_s,
                              u"currentGamepadChanged(QUuid,QString,QString,QJsonObject,QString)"_s}));
        QCOMPARE(
            methodsOf(meta, QMetaMethod::Slot),
            (QStringList{u"on_pushButtonAdd_clicked()"_s, u"onListSelectionChanged(int)"_s,
                         u"showListContextMenu(QPoint)"_s, u"actionNew()"_s, u"actionSave()"_s,
                         u"actionDuplicate()"_s, u"actionDelete()"_s, u"actionRename()"_s,
                         u"actionChangeImage()"_s, u"actionExport()"_s, u"actionImport()"_s,
                         u"actionCopy()"_s, u"actionPaste()"_s, u"actionSnapshot()"_s,
                         u"actionSnapshotAll()"_s, u"onOverlayDirty()"_s, u"onDeviceComboChanged(QString)"_s,
                         u"onAxisChanged(int,double)"_s, u"onButtonChanged(int,bool)"_s}));
        QCOMPARE(methodsOf(meta, QMetaMethod::Method),
                 (QStringList{u"emitCurrentSelection()"_s, u"exportSnapshotsToDir(QString)"_s}));
        const QMetaProperty gamepads = meta.property(meta.indexOfProperty("realGamepads"));
        QCOMPARE(gamepads.metaType(), QMetaType::fromType<QList<QPointer<ControlManette>>>());
        QCOMPARE(gamepads.notifySignal().name(), "realGamepadsChanged"_ba);
        QVERIFY(gamepads.isWritable());
    }

    void anItemShowsNameAndPicture()
    {
        const QString red = store(1, {.name = u"Rouge"_s, .picture = Qt::red});
        const QString blue = store(2, {.name = u"Bleu"_s, .picture = Qt::blue});
        const Pads pads;
        const GamepadDefinder editor;
        const QListWidget &list = listOf(editor);
        QCOMPARE(list.count(), 2);
        QCOMPARE(list.item(0)->text(), u"Rouge"_s);
        QCOMPARE(list.item(1)->text(), u"Bleu"_s);
        for (int row = 0; row < 2; ++row) {
            const QListWidgetItem *item = list.item(row);
            QCOMPARE(item->textAlignment(), int{Qt::AlignHCenter | Qt::AlignTop});
            QCOMPARE(item->sizeHint(), QSize(220, 190));
            QVERIFY(item->flags() & Qt::ItemIsSelectable);
            QVERIFY(item->flags() & Qt::ItemIsEnabled);
            QCOMPARE(editor.entries().at(row).item, item);
        }
        QCOMPARE(iconIn(editor, 0), iconOfPicture(red + "/image.png"_L1, false));
        QCOMPARE(iconIn(editor, 1), iconOfPicture(blue + "/image.png"_L1, false));
    }

    void aProfileWithoutPictureShowsThePlaceholderAndNoBackground()
    {
        store(1, {.picture = QColor()});
        const Pads pads;
        const GamepadDefinder editor;
        QCOMPARE(iconIn(editor, 0), iconOfPicture({}, false));
        QVERIFY(overlayOf(editor).backgroundPixmap().isNull());
        QCOMPARE(titlesOn(editor), QStringList{u"Start"_s});
    }

    void aFrameFollowsTheGamepadWithoutANewSelection()
    {
        const QString folder = store(1, {.deviceName = u"Pad"_s});
        const QString path = folder + "/image.png"_L1;
        Pads pads;
        const GamepadDefinder editor;
        QCOMPARE(iconIn(editor, 0), iconOfPicture(path, false));
        pads.plug(0);
        QCOMPARE(iconIn(editor, 0), iconOfPicture(path, true));
        QVERIFY(iconOfPicture(path, true) != iconOfPicture(path, false));
        pads.unplug(0);
        QCOMPARE(iconIn(editor, 0), iconOfPicture(path, false));
    }

    void aFrameAsksForTheExactNameAndALink()
    {
        store(1, {.deviceName = u"PAD"_s});
        store(2, {.deviceName = QString()});
        Pads pads;
        pads.plug(0, u"Pad"_s);
        pads.plug(1, QString());
        const GamepadDefinder editor;
        for (int row = 0; row < 2; ++row)
            QCOMPARE(iconIn(editor, row), iconOfPicture(editor.entries().at(row).imagePath, false));
    }

    void thePlusButtonIsTheNewCommand()
    {
        const Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QString title;
        const Answer<QInputDialog> dialog(openDialog, [&](QInputDialog *open) {
            title = open->windowTitle();
            QTest::keyClick(open, Qt::Key_Escape);
        });
        QTest::mouseClick(editor.findChild<QPushButton *>(u"pushButtonAdd"_s), Qt::LeftButton);
        QCOMPARE(title, u"Nouveau gamepad"_s);
        QCOMPARE(editor.entries().size(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestEditorForm)
#include "tst_editorform.moc"
