// SPDX-License-Identifier: MIT
#include "editorstage.h"

#include "gamepadmanager.h"
#include "interactiveoverlay.h"
#include "profilesroot.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QMetaEnum>
#include <QtGui/QImage>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace stage
{
namespace
{
void write(const QString &path, const QJsonObject &object)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(object).toJson()) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

QJsonObject read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

QJsonObject overlayWith(const QStringList &titles)
{
    InteractiveOverlay overlay;
    overlay.resize(600, 400);
    int x = 100;
    for (const QString &title : titles)
        overlay.addPastille(QPoint(x += 80, 150), title);
    return overlay.toJson();
}
} // namespace

void startAfresh()
{
    scripted::reset();
    clearTemporaryHome();
    failOnUnexpectedWarnings();
}

QUuid idOf(int number)
{
    return QUuid(u"%1%1%1%1%1%1%1%1-0000-4000-8000-000000000000"_s.arg(number));
}

QString store(int number, const Profile &profile)
{
    const QString id = idOf(number).toString(QUuid::WithoutBraces);
    const QString folder = profilesRootPath() + u'/' + id;
    QDir().mkpath(folder);
    if (profile.picture.isValid()) {
        QImage picture(80, 60, QImage::Format_RGB32);
        picture.fill(profile.picture);
        if (!picture.save(folder + "/image.png"_L1))
            qFatal("cannot write a picture");
    }
    write(folder + "/overlay.json"_L1, overlayWith(profile.pastilles));
    const QString longAgo = u"2020-01-01T00:00:00Z"_s;
    write(folder + "/meta.json"_L1, {{u"type"_s, u"GamepadDefinderMeta"_s},
                                     {u"version"_s, 2},
                                     {u"id"_s, id},
                                     {u"name"_s, profile.name},
                                     {u"image"_s, u"image.png"_s},
                                     {u"overlayFile"_s, u"overlay.json"_s},
                                     {u"config"_s, u"configActionGamepad.json"_s},
                                     {u"deviceName"_s, profile.deviceName},
                                     {u"createdAt"_s, longAgo},
                                     {u"modifiedAt"_s, longAgo}});
    return folder;
}

QJsonObject metaIn(const QString &folder)
{
    return read(folder + "/meta.json"_L1);
}

QJsonObject overlayIn(const QString &folder)
{
    return read(folder + "/overlay.json"_L1);
}

QStringList titlesIn(const QString &folder)
{
    QStringList titles;
    const QJsonArray nodes = overlayIn(folder)["nodes"_L1].toArray();
    for (const QJsonValue &node : nodes)
        titles.append(node["title"_L1].toString());
    return titles;
}

BlockedFile::BlockedFile(QString path)
    : m_path(std::move(path))
{
    if (!QFile::rename(m_path, m_path + ".aside"_L1) || !QDir().mkdir(m_path))
        qFatal("cannot block %s", qPrintable(m_path));
}

BlockedFile::~BlockedFile()
{
    if (!QDir().rmdir(m_path) || !QFile::rename(m_path + ".aside"_L1, m_path))
        qWarning("cannot unblock %s", qPrintable(m_path));
}

Pads::Pads()
{
    GamepadManager::instance(&m_parent)->stopTimers();
}

Pads::~Pads() = default;

ControlManette *Pads::plug(unsigned slot, const QString &name)
{
    scripted::plug(slot, scripted::restingPad(name.toStdString()));
    QMetaObject::invokeMethod(GamepadManager::instance(), "discoverDevices");
    return device(slot);
}

void Pads::unplug(unsigned slot)
{
    scripted::unplug(slot);
    QMetaObject::invokeMethod(GamepadManager::instance(), "discoverDevices");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

ControlManette *Pads::device(unsigned slot) const
{
    const GamepadManager::Gamepads devices = GamepadManager::instance()->gamepads();
    for (const auto &device : devices) {
        if (device && device->deviceId() == static_cast<int>(slot))
            return device;
    }
    return nullptr;
}

bool Pads::isRunning(unsigned slot) const
{
    return timerOf(*device(slot)).isActive();
}

void Pads::calibrate(unsigned slot)
{
    tick(*device(slot), 40);
}

void Pads::move(unsigned slot, unsigned axis, float value)
{
    scripted::pad(slot).axes.at(axis) = value;
    tick(*device(slot));
}

void Pads::press(unsigned slot, unsigned button)
{
    scripted::pad(slot).buttons.set(button);
    tick(*device(slot));
}

void Pads::release(unsigned slot, unsigned button)
{
    scripted::pad(slot).buttons.reset(button);
    tick(*device(slot));
}

Boxes::Boxes(const Look &look)
{
    m_timer.callOnTimeout(&m_timer, [this, look] {
        auto *box = qobject_cast<QMessageBox *>(openDialog());
        if (!box || !box->isVisible())
            return;
        QAbstractButton *ok = box->button(QMessageBox::Ok);
        if (!ok || box->buttons().size() != 1)
            return;
        const auto icon = QMetaEnum::fromType<QMessageBox::Icon>();
        m_lines.append(QLatin1StringView(icon.valueToKey(box->icon())) + ": "_L1 + box->windowTitle() +
                       ": "_L1 + box->text());
        if (look)
            look(*box);
        QTest::mouseClick(ok, Qt::LeftButton);
    });
    m_timer.start(1);
}

Journal::Journal(GamepadDefinder *editor)
{
    connect(editor, &GamepadDefinder::realGamepadsChanged, this,
            [this] { m_lines.append(u"realGamepadsChanged"_s); });
    connect(editor, &GamepadDefinder::deviceSelectionChanged, this,
            [this](const QString &device) { m_lines.append("device "_L1 + device); });
    connect(editor, &GamepadDefinder::currentGamepadChanged, this,
            [this](const QUuid &id, const QString &name, const QString &device) {
                m_lines.append(
                    u"current %1 %2 %3"_s.arg(id.toString(QUuid::WithoutBraces).first(1), name, device)
                        .trimmed());
            });
}

QListWidget &listOf(const GamepadDefinder &editor)
{
    return *editor.findChild<QListWidget *>(u"listWidget"_s, Qt::FindDirectChildrenOnly);
}

QComboBox &comboOf(const GamepadDefinder &editor)
{
    return *editor.findChild<QComboBox *>(u"comboBoxVendorId"_s, Qt::FindDirectChildrenOnly);
}

InteractiveOverlay &overlayOf(const GamepadDefinder &editor)
{
    return *editor.findChild<InteractiveOverlay *>(u"widgetOverlay"_s, Qt::FindDirectChildrenOnly);
}

QTimer &saveTimerOf(const GamepadDefinder &editor)
{
    return timerOf(editor, u"saveTimer"_s);
}

QTimer &triggerTimerOf(const GamepadDefinder &editor)
{
    return timerOf(editor, u"triggerTimer"_s);
}

QStringList titlesOn(const GamepadDefinder &editor)
{
    QStringList titles;
    const QJsonArray nodes = overlayOf(editor).toJson()["nodes"_L1].toArray();
    for (const QJsonValue &node : nodes)
        titles.append(node["title"_L1].toString());
    return titles;
}

QStringList namesIn(const QComboBox &combo)
{
    QStringList names;
    for (int i = 0; i < combo.count(); ++i)
        names.append(combo.itemText(i));
    return names;
}

bool isFramed(const GamepadDefinder &editor, int row)
{
    const QImage icon = listOf(editor).item(row)->icon().pixmap(listOf(editor).iconSize()).toImage();
    return icon.pixelColor(2, icon.height() / 2) == QColor(0, 180, 0);
}

void listen(const GamepadDefinder &editor)
{
    settle(); // pastilles of an earlier profile go
    overlayOf(editor).findChild<TouchArea *>(Qt::FindDirectChildrenOnly)->startListening();
}

void addPastille(const GamepadDefinder &editor, const QString &title)
{
    overlayOf(editor).addPastille(QPoint(50, 50), title);
}

QWidget *openDialog()
{
    return QApplication::activeModalWidget();
}

QWidget *openPopup()
{
    return QApplication::activePopupWidget();
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

bool present(GamepadDefinder &editor)
{
    editor.show();
    editor.activateWindow();
    return QTest::qWaitForWindowActive(&editor);
}

void click(GamepadDefinder &editor, int row)
{
    QListWidget &list = listOf(editor);
    list.scrollToItem(list.item(row));
    const QPoint place = list.visualItemRect(list.item(row)).center();
    const QPoint inWindow = list.viewport()->mapTo(&editor, QPoint(60, place.y()));
    QTest::mousePress(editor.windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow);
    QTest::mouseRelease(editor.windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow);
}
} // namespace stage
