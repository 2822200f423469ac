// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QTimer>
#include <QtWidgets/QTreeWidget>

class NoCodeWatch;

/// The documents that the selected devices name, each with its bridges. A bridge that the last input would
/// fire lights up for a moment. Nothing is run.
class NoCodePanel : public QTreeWidget
{
    Q_OBJECT

public:
    explicit NoCodePanel(NoCodeWatch &documents, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void showDocuments();
    void light(qsizetype entry, qsizetype bridge);
    void fade();

    NoCodeWatch &m_documents;
    QElapsedTimer m_clock;
    QHash<QTreeWidgetItem *, qint64> m_lit;
    QTimer m_fading;
};
