// SPDX-License-Identifier: MIT
#include "hostwindow.h"

#include "devicelist.h"
#include "hostsession.h"
#include "icominterfacemodelprovider.h"
#include "livepanel.h"
#include "nocodepanel.h"
#include "signallog.h"
#include "theme.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
QFrame *titledPanel(const QString &title, QWidget *content)
{
    auto *frame = new QFrame;
    frame->setObjectName("panel"_L1);
    auto *label = new QLabel(title);
    label->setObjectName("title"_L1);
    label->setFont(theme::resized(label->font(), 1, true));
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(16, 14, 16, 14);
    layout->setSpacing(8);
    layout->addWidget(label);
    layout->addWidget(content, 1);
    return frame;
}
} // namespace

HostWindow::HostWindow(HostSession &session, NoCodeWatch &documents, QWidget *parent)
    : QMainWindow(parent)
    , m_session(session)
    , m_list(new DeviceList(session))
    , m_single(new QCheckBox(u"One at a time"_s))
{
    setWindowTitle(u"Gamepads – stand-in host"_s);
    setWindowIcon(session.provider()->icon());

    auto *content = new QWidget;
    auto *layout = new QHBoxLayout(content);
    layout->setContentsMargins(14, 14, 14, 14);
    layout->setSpacing(14);
    layout->addWidget(deviceColumn());
    layout->addWidget(new LivePanel(session), 1);
    layout->addWidget(rightColumn(documents));
    theme::dress(*content);
    setCentralWidget(content);
    resize(1440, 820);
}

QWidget *HostWindow::deviceColumn()
{
    auto *icon = new QLabel;
    icon->setPixmap(m_session.provider()->icon().pixmap(40, 40));
    auto *family = new QLabel(m_session.provider()->interfaceName());
    family->setObjectName("title"_L1);
    family->setFont(theme::resized(family->font(), 5, true));
    auto *maker = new QLabel(u"plugin by %1"_s.arg(m_session.provider()->providerName()));
    maker->setObjectName("quiet"_L1);

    auto *words = new QVBoxLayout;
    words->setSpacing(0);
    words->addWidget(family);
    words->addWidget(maker);
    auto *head = new QHBoxLayout;
    head->setContentsMargins(8, 0, 8, 0);
    head->setSpacing(12);
    head->addWidget(icon);
    head->addLayout(words, 1);

    auto *configure = new QPushButton(u"Configuration…"_s);
    connect(configure, &QPushButton::clicked, this, &HostWindow::configure);
    showProperties();
    connect(m_single, &QCheckBox::toggled, this,
            [this](bool single) { m_session.model()->setProperty("uniqSelection", single); });
    auto *foot = new QHBoxLayout;
    foot->setContentsMargins(8, 0, 8, 0);
    foot->addWidget(m_single, 1);
    foot->addWidget(configure);

    auto *column = new QWidget;
    column->setFixedWidth(328);
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addLayout(head);
    layout->addWidget(m_list, 1);
    layout->addLayout(foot);
    return column;
}

QWidget *HostWindow::rightColumn(NoCodeWatch &documents)
{
    auto *log = new SignalLog(m_session, this);
    auto *lines = new QListView;
    lines->setModel(log);
    lines->setFont(theme::figures(lines->font()));
    lines->setSelectionMode(QAbstractItemView::NoSelection);
    lines->setFocusPolicy(Qt::NoFocus);
    lines->setUniformItemSizes(true);
    lines->setTextElideMode(Qt::ElideRight);
    lines->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(log, &QAbstractItemModel::rowsInserted, lines, &QListView::scrollToBottom);

    auto *column = new QSplitter(Qt::Vertical);
    column->setFixedWidth(430);
    column->setHandleWidth(14);
    column->addWidget(titledPanel(u"No-code documents"_s, new NoCodePanel(documents)));
    column->addWidget(titledPanel(u"Signals"_s, lines));
    column->setStretchFactor(0, 2);
    column->setStretchFactor(1, 3);
    return column;
}

void HostWindow::showProperties()
{
    m_single->setChecked(m_session.model()->property("uniqSelection").toBool());
}

void HostWindow::configure()
{
    QMainWindow *window = m_session.configWindow(this);
    if (!window)
        return;
    if (!window->testAttribute(Qt::WA_Resized))
        window->resize(1200, 760);
    window->show();
    window->raise();
    window->activateWindow();
}
