// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QListView>

class HostSession;

/// The plugin's list in the plugin's painting. While it is empty, it says what to do.
class DeviceList : public QListView
{
    Q_OBJECT

public:
    explicit DeviceList(HostSession &session, QWidget *parent = nullptr);

    /// Clicks a row as a person does, with mouse events in the middle of its card.
    void click(int row);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
