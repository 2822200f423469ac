// SPDX-License-Identifier: MIT
#pragma once

#include "controlmanette.h"
#include "gamepadentry.h"
#include "inputcapture.h"
#include "profileicon.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <QtCore/QUuid>
#include <QtWidgets/QWidget>

class InteractiveOverlay;
class QComboBox;
class QListWidget;
struct SnapshotSubject;

/// The editor of gamepad profiles: a list of all of them, and the one on show with its picture and pastilles.
/// It saves by itself, shows which profiles' gamepads are connected, and listens to the gamepad of the
/// profile on show. A row number counts in the list as in `entries`.
///
/// Its boxes, menus and dialogs run event loops, and the editor may be deleted under each of them.
class GamepadDefinder : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QList<QPointer<ControlManette>> realGamepads READ realGamepads WRITE setRealGamepads NOTIFY
                   realGamepadsChanged)

public:
    using Gamepads = QList<QPointer<ControlManette>>;

    /// Reads all profiles and shows the first one. Follows the process's `GamepadManager`.
    explicit GamepadDefinder(QWidget *parent = nullptr);
    /// Saves what is not on disk yet.
    ~GamepadDefinder() override;

    /// The connected gamepads, as the manager has them. Pointers can be null.
    [[nodiscard]] Gamepads realGamepads() const { return m_realGamepads; }
    void setRealGamepads(const Gamepads &gamepads);

    [[nodiscard]] const QList<GamepadEntry> &entries() const { return m_entries; }
    /// The row on show, -1 for none. After the bottom row was deleted it is -1 with a profile on show.
    [[nodiscard]] int currentRow() const { return m_currentRow; }
    /// Whether the editor may hold what is not on disk.
    [[nodiscard]] bool isDirty() const { return m_dirty; }

    /// Reads the profiles root anew and shows row 0.
    void reloadProfiles();
    /// Adds a profile at the end, with its item in the list.
    void appendEntry(const GamepadEntry &entry);
    /// Puts the row's profile into the editor; `currentRow` stays. False, after a box, where its overlay
    /// cannot be read; only the picture has changed then.
    bool loadProfile(int row);
    /// Writes the overlay on show, and the row's record. False, after a box, at the first file that cannot be
    /// written.
    bool saveProfile(int row);
    /// Copies the row's profile as it is on disk, unlinked, into a new last row that `newRow` receives.
    /// False, after a box, where that failed; `newRow` is untouched then.
    bool duplicateProfile(int row, int *newRow);
    /// Makes an unlinked profile of an exchange document, in a new last row that `newRow` receives. False,
    /// where a file was the reason after a box, and `newRow` untouched.
    bool importExchangeDocument(const QJsonObject &document, int *newRow);
    /// Writes one PNG for each profile into a folder, which is made. False when the run could not begin;
    /// `written` and `errors`, one "%1 : %2" for each failed profile, can be null.
    bool exportAllSnapshots(const QString &outDir, int *written, QStringList *errors);

    /// Tells listeners that came late of the profile on show; nothing where its overlay cannot be read.
    Q_INVOKABLE void emitCurrentSelection();
    /// As `exportAllSnapshots`, without a box: the number of files written, -1 when the run could not begin.
    Q_INVOKABLE int exportSnapshotsToDir(const QString &outDir);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void realGamepadsChanged();
    /// The gamepad that the profile on show is linked to has changed, or the profile has; empty for none.
    void deviceSelectionChanged(const QString &deviceName);
    /// A profile was loaded; `overlay` is the document as it is on disk.
    void currentGamepadChanged(const QUuid &id, const QString &name, const QString &deviceName,
                               const QJsonObject &overlay, const QString &imagePath);

public Q_SLOTS:
    void on_pushButtonAdd_clicked(); // clazy:exclude=connect-by-name (wired by its name, as its form is)
    void onListSelectionChanged(int row);
    /// `pos` is the list viewport's.
    void showListContextMenu(const QPoint &pos);
    void actionNew();
    void actionSave();
    void actionDuplicate();
    void actionDelete();
    void actionRename();
    void actionChangeImage();
    void actionExport();
    void actionImport();
    void actionCopy();
    void actionPaste();
    void actionSnapshot();
    void actionSnapshotAll();
    void onOverlayDirty();
    void onDeviceComboChanged(const QString &deviceName);
    void onAxisChanged(int axis, double value);
    void onButtonChanged(int button, bool pressed);

protected:
    void closeEvent(QCloseEvent *event) override;
    /// Takes a changed list of gamepads into the combo, the frames and the notice of full coverage.
    virtual void onRealGamepadsApplied(const Gamepads &gamepads);

private:
    // The form and the list.
    void setUpForm();
    void setUpList();
    void setUpShortcuts();
    [[nodiscard]] bool isRow(int row) const { return row >= 0 && row < m_entries.size(); }
    /// The row of a profile, -1 for none. Folders tell profiles apart where rows have shifted; ids can
    /// repeat.
    [[nodiscard]] int rowOf(const QString &folder) const;
    [[nodiscard]] bool isLive(const GamepadEntry &entry) const;
    void refreshItem(const GamepadEntry &entry);

    // What is on show.
    void showNothing();
    void returnToCurrentRow();
    bool flush();
    void closeBoxes();

    // Operations on files, with their dialogs.
    QString gamepadsRootPath();
    void createProfile();
    void leaveRow(int row);
    void removeRow(int row, bool wasOnShow);

    // Exchange and snapshots.
    [[nodiscard]] bool isOnShow(const QString &folder) const;
    struct ImportWords;
    void importUnlinked(const QJsonObject &document, const ImportWords &words);
    [[nodiscard]] QList<SnapshotSubject> snapshotSubjects() const;

    // The gamepads and the link to one of them.
    void takeGamepads();
    void followNextManager();
    void rebuildDeviceCombo(const Gamepads &gamepads);
    void rebuildLiveNames(const Gamepads &gamepads);
    void checkCoverage();
    [[nodiscard]] QString chooseFreeDevice();
    [[nodiscard]] bool isDeviceNameTaken(const QString &name, int exceptRow) const;
    void selectDeviceInCombo(const QString &name);
    [[nodiscard]] ControlManette *findGamepadByName(const QString &name) const;
    [[nodiscard]] bool isLinkOnShow(int row, const QString &deviceName) const;
    void bindGamepad(ControlManette *gamepad);
    void bindGamepadByName(const QString &name);
    void unbindGamepad();

    // The input that a pastille waits for.
    struct TriggerAnswer
    {
        TriggerUse use = TriggerUse::Button;
        bool remember = false;
    };
    void resetPendingInput();
    void resolvePendingInput();
    [[nodiscard]] TriggerAnswer askTriggerUse(const PendingInput &input, const QString &device);

    Gamepads m_realGamepads;
    bool m_managerDied = false;
    static constexpr QSize iconSize{200, 140};
    ProfileIcons m_icons{iconSize};
    QListWidget *m_listWidget = nullptr;
    QComboBox *m_comboBoxVendorId = nullptr; ///< of gamepad names, despite its name
    InteractiveOverlay *m_widgetOverlay = nullptr;
    QString m_rootPath; ///< cache of `gamepadsRootPath`
    QList<GamepadEntry> m_entries;
    int m_currentRow = -1;
    bool m_dirty = false;
    QSet<QString> m_liveNames;
    bool m_coverageNoticeShown = false;
    QTimer m_saveTimer;
    QPointer<ControlManette> m_wantedGamepad; ///< of the last row or link that was chosen
    QPointer<ControlManette> m_boundGamepad;
    QList<QMetaObject::Connection> m_inputConnections;
    QTimer m_triggerTimer;
    PendingInput m_pending;
    int m_openQuestions = 0;
    TriggerChoices m_triggerChoices;
};
