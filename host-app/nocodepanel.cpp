// SPDX-License-Identifier: MIT
#include "nocodepanel.h"

#include "nocodewatch.h"
#include "theme.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QHeaderView>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 litMs = 700;
constexpr int fadeStepMs = 40;
constexpr int columns = 3;
} // namespace

NoCodePanel::NoCodePanel(NoCodeWatch &documents, QWidget *parent)
    : QTreeWidget(parent)
    , m_documents(documents)
{
    m_clock.start();
    setHeaderLabels({u"Input"_s, u"Action"_s, u"Would run"_s});
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setIndentation(10);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideRight);
    header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(&documents, &NoCodeWatch::documentsChanged, this, &NoCodePanel::showDocuments);
    connect(&documents, &NoCodeWatch::fires, this, &NoCodePanel::light);
    connect(&m_fading, &QTimer::timeout, this, &NoCodePanel::fade);
}

void NoCodePanel::paintEvent(QPaintEvent *event)
{
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() == 0)
        theme::paintInvitation(*viewport(), u"What a selected gamepad would run appears here.\n"
                                            "Its bridges light up; nothing is run."_s);
}

void NoCodePanel::showDocuments()
{
    m_lit.clear();
    m_fading.stop();
    clear();
    for (const auto &entry : m_documents.entries()) {
        auto *file = new QTreeWidgetItem(this);
        const QString state =
            entry.document.problem.isEmpty() ? QString() : u"  (%1)"_s.arg(entry.document.problem);
        file->setText(0,
                      u"%1 · %2%3"_s.arg(entry.deviceName, QFileInfo(entry.document.path).fileName(), state));
        file->setToolTip(0, QDir::toNativeSeparators(entry.document.path));
        file->setForeground(0, theme::quiet);
        file->setFirstColumnSpanned(true);
        for (const Bridge &bridge : entry.document.bridges) {
            const QString tasks = tasksText(bridge.tasks);
            auto *item = new QTreeWidgetItem(file, {bridge.key, bridge.action, tasks});
            item->setToolTip(2, tasks);
        }
        file->setExpanded(true);
    }
}

void NoCodePanel::light(qsizetype entry, qsizetype bridge)
{
    QTreeWidgetItem *file = topLevelItem(static_cast<int>(entry));
    QTreeWidgetItem *item = file ? file->child(static_cast<int>(bridge)) : nullptr;
    if (!item)
        return;
    m_lit.insert(item, m_clock.elapsed());
    if (!m_fading.isActive())
        m_fading.start(fadeStepMs);
}

void NoCodePanel::fade()
{
    const qint64 now = m_clock.elapsed();
    m_lit.removeIf([now](const QHash<QTreeWidgetItem *, qint64>::iterator &lit) {
        const double rest = 1.0 - static_cast<double>(now - lit.value()) / static_cast<double>(litMs);
        QColor colour = theme::good;
        colour.setAlphaF(static_cast<float>(rest > 0.0 ? rest * 0.45 : 0.0));
        for (int column = 0; column < columns; ++column)
            lit.key()->setBackground(column, colour);
        return rest <= 0.0;
    });
    if (m_lit.isEmpty())
        m_fading.stop();
}
