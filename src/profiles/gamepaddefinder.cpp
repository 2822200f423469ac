// SPDX-License-Identifier: MIT
#include "gamepaddefinder.h"

#include "devicecombobox.h"
#include "interactiveoverlay.h"
#include "profileicon.h"
#include "profileitemdelegate.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

GamepadDefinder::GamepadDefinder(QWidget *parent)
    : QWidget(parent)
    , m_saveTimer(this)
    , m_triggerTimer(this)
{
    setUpForm();
    setUpList();
    setUpShortcuts();

    m_widgetOverlay->setBackgroundScaleMode(OverlayLines::BackgroundScaleMode::Contain);
    m_widgetOverlay->setMode(InteractiveOverlay::Edit);

    connect(m_listWidget, &QListWidget::currentRowChanged, this, &GamepadDefinder::onListSelectionChanged);
    connect(m_listWidget, &QListWidget::customContextMenuRequested, this,
            &GamepadDefinder::showListContextMenu);

    // The first profile is loaded before the overlay's changes are followed: to open the window writes
    // nothing.
    gamepadsRootPath();
    reloadProfiles();

    m_widgetOverlay->installEventFilter(this);
    connect(m_widgetOverlay, &InteractiveOverlay::dirty, this, &GamepadDefinder::onOverlayDirty);

    m_saveTimer.setObjectName(u"saveTimer"_s);
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(250ms);
    connect(&m_saveTimer, &QTimer::timeout, this, [this] {
        if (m_currentRow >= 0)
            saveProfile(m_currentRow);
    });

    connect(m_comboBoxVendorId, &QComboBox::currentTextChanged, this, &GamepadDefinder::onDeviceComboChanged);

    // Its gamepads come after the profiles, so the profile that is on show by now is not bound to its own.
    takeGamepads();

    m_triggerTimer.setObjectName(u"triggerTimer"_s);
    m_triggerTimer.setSingleShot(true);
    m_triggerTimer.setInterval(200ms);
    connect(&m_triggerTimer, &QTimer::timeout, this, &GamepadDefinder::resolvePendingInput);
}

GamepadDefinder::~GamepadDefinder()
{
    // A box of a failed save runs an event loop, in which nothing is to start any more.
    m_saveTimer.stop();
    m_triggerTimer.stop();
    flush();
    m_saveTimer.stop();
    m_triggerTimer.stop();
    // The children go after this part of the object: what they emit then must not reach it.
    m_listWidget->disconnect(this);
    m_comboBoxVendorId->disconnect(this);
    m_widgetOverlay->removeEventFilter(this);
    m_widgetOverlay->disconnect(this);
}

void GamepadDefinder::setUpForm()
{
    setObjectName(u"GamepadDefinder"_s);
    setWindowTitle(u"Form"_s);
    resize(1156, 479);

    auto *layout = new QGridLayout(this);
    layout->setObjectName(u"gridLayout"_s);

    auto *add = new QPushButton(u"+"_s, this);
    add->setObjectName(u"pushButtonAdd"_s);
    connect(add, &QPushButton::clicked, this, &GamepadDefinder::on_pushButtonAdd_clicked);
    layout->addWidget(add, 0, 0, 1, 1);

    m_listWidget = new QListWidget(this);
    m_listWidget->setObjectName(u"listWidget"_s);
    m_listWidget->setMaximumWidth(200);
    layout->addWidget(m_listWidget, 2, 0, 2, 1);

    m_comboBoxVendorId = new DeviceComboBox(this);
    m_comboBoxVendorId->setObjectName(u"comboBoxVendorId"_s);
    layout->addWidget(m_comboBoxVendorId, 2, 1, 1, 1);

    m_widgetOverlay = new InteractiveOverlay(this);
    m_widgetOverlay->setObjectName(u"widgetOverlay"_s);
    m_widgetOverlay->setMinimumWidth(400);
    layout->addWidget(m_widgetOverlay, 3, 1, 1, 1);
}

void GamepadDefinder::setUpList()
{
    m_listWidget->clear();
    m_listWidget->setViewMode(QListView::IconMode);
    m_listWidget->setIconSize(iconSize);
    m_listWidget->setGridSize(QSize(220, 190));
    m_listWidget->setResizeMode(QListView::Adjust);
    m_listWidget->setMovement(QListView::Static);
    m_listWidget->setWrapping(true);
    m_listWidget->setUniformItemSizes(true);
    m_listWidget->setSelectionMode(QAbstractItemView::SingleSelection);
    m_listWidget->setContextMenuPolicy(Qt::CustomContextMenu);
    m_listWidget->setItemDelegate(new ProfileItemDelegate(m_listWidget));
}

void GamepadDefinder::appendEntry(const GamepadEntry &entry)
{
    m_entries.append(entry);
    auto *item = new QListWidgetItem(entry.name);
    item->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
    item->setSizeHint(m_listWidget->gridSize());
    item->setFlags(item->flags() | Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    item->setIcon(m_icons.iconOf(entry.imagePath, isLive(entry)));
    m_entries.last().item = item;
    m_listWidget->insertItem(m_listWidget->count(), item);
}

void GamepadDefinder::refreshItem(const GamepadEntry &entry)
{
    if (!entry.item)
        return;
    entry.item->setText(entry.name);
    entry.item->setIcon(m_icons.iconOf(entry.imagePath, isLive(entry)));
}

bool GamepadDefinder::isLive(const GamepadEntry &entry) const
{
    return !entry.deviceName.isEmpty() && m_liveNames.contains(entry.deviceName);
}

void GamepadDefinder::closeBoxes()
{
    const auto boxes = findChildren<QDialog *>(Qt::FindDirectChildrenOnly);
    for (QDialog *box : boxes)
        box->close();
}
