// SPDX-License-Identifier: MIT
#pragma once

#include "answer.h"
#include "gamepaddefinder.h"
#include "tickdriver.h"

#include <QtGui/QColor>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>

class InteractiveOverlay;
class QMenu;
class QMessageBox;

/// What the tests of the profile editor share. All files lie in the temporary home of the program.
namespace stage
{
/// An empty home without joysticks, and no unexpected warning from here on.
void startAfresh();

struct Profile
{
    QString name = QStringLiteral("Manette");
    QString deviceName{};
    QColor picture = Qt::blue; ///< of a picture of 80 by 60 pixels; invalid for none
    QStringList pastilles{QStringLiteral("Start")};
};

/// Writes a profile that has `createdAt`; rows come in the order of the numbers, 1 to 9. Returns its folder.
QString store(int number, const Profile &profile = {});
QUuid idOf(int number);
QJsonObject metaIn(const QString &folder);
QJsonObject overlayIn(const QString &folder);
/// The titles in the overlay document on disk.
QStringList titlesIn(const QString &folder);

/// Puts a folder where the file is, so that it can neither be read nor written, until this object goes.
class BlockedFile
{
public:
    explicit BlockedFile(QString path);
    ~BlockedFile();
    Q_DISABLE_COPY_MOVE(BlockedFile)

private:
    QString m_path;
};

/// Scripted joysticks and the manager that finds them, for as long as this object lives. Nothing is
/// discovered but by these calls.
class Pads
{
public:
    Pads();
    ~Pads();
    Q_DISABLE_COPY_MOVE(Pads)

    ControlManette *plug(unsigned slot, const QString &name = QStringLiteral("Pad"));
    void unplug(unsigned slot);
    [[nodiscard]] ControlManette *device(unsigned slot) const;
    [[nodiscard]] bool isRunning(unsigned slot) const;

    /// Lets a started device learn its rest, so that it publishes.
    void calibrate(unsigned slot);
    // One tick with each new reading.
    void move(unsigned slot, unsigned axis, float value);
    void press(unsigned slot, unsigned button);
    void release(unsigned slot, unsigned button);

private:
    QObject m_parent;
};

/// Notes each message box as "icon: title: text" and clicks its Ok, after `look` had it, while this object
/// lives.
class Boxes
{
public:
    using Look = std::function<void(const QMessageBox &)>;

    explicit Boxes(const Look &look = {});
    /// What came since the last call.
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    QTimer m_timer;
    QStringList m_lines;
};

/// Every signal of an editor as text, in the order of emission.
class Journal : public QObject
{
public:
    explicit Journal(GamepadDefinder *editor);
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    QStringList m_lines;
};

QListWidget &listOf(const GamepadDefinder &editor);
QComboBox &comboOf(const GamepadDefinder &editor);
InteractiveOverlay &overlayOf(const GamepadDefinder &editor);
QTimer &saveTimerOf(const GamepadDefinder &editor);
QTimer &triggerTimerOf(const GamepadDefinder &editor);
/// The titles of the pastilles on show.
QStringList titlesOn(const GamepadDefinder &editor);
QStringList namesIn(const QComboBox &combo);
/// Whether the item of a row has the frame of a profile whose gamepad is connected.
bool isFramed(const GamepadDefinder &editor, int row);
/// Makes the first pastille on show wait for an input.
void listen(const GamepadDefinder &editor);
/// A change of the overlay that ought to reach disk.
void addPastille(const GamepadDefinder &editor, const QString &title);

QWidget *openDialog();
QWidget *openPopup();
/// Lets queued calls and deferred deletions happen.
void settle();
/// Shows an editor and waits until it is there.
[[nodiscard]] bool present(GamepadDefinder &editor);
/// A person's click on an item.
void click(GamepadDefinder &editor, int row);
} // namespace stage
