// SPDX-License-Identifier: MIT
#pragma once

#include "cardmodel.h"
#include "deviceitemdelegate.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QListView>

/// A host's list of cards, on show, with everything that the delegate says of it.
class CardView
{
public:
    explicit CardView(const QList<CardRow> &rows = {CardModel::fullRow(QStringLiteral("gp:0")),
                                                    CardModel::fullRow(QStringLiteral("gp:1"))})
        : model(rows)
    {
        view.setItemDelegate(&delegate);
        view.setModel(&model);
        view.setMouseTracking(true);
        // Nothing beside the cards, so that each gets the size that it asks for and no more.
        view.setFrameShape(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.resize(300, 500);
        view.show();
    }

    [[nodiscard]] bool isReady()
    {
        return QTest::qWaitForWindowExposed(&view) &&
               view.visualRect(model.index(0)) == QRect(0, 0, 300, 240);
    }

    /// A point of a card, by its distance from the item's top left, in the viewport.
    QPoint at(int row, const QPoint &point) const
    {
        return view.visualRect(model.index(row)).topLeft() + point;
    }

    void click(int row, const QPoint &point, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(view.viewport(), button, {}, at(row, point));
    }

    int saidInAll() const { return static_cast<int>(toggled.size() + configured.size() + removed.size()); }

    CardModel model;
    DeviceItemDelegate delegate;
    QListView view;
    QSignalSpy toggled{&delegate, &DeviceItemDelegate::toggledSelect};
    QSignalSpy configured{&delegate, &DeviceItemDelegate::requestConfig};
    QSignalSpy removed{&delegate, &DeviceItemDelegate::requestDelete};
};

/// The middle of a card, where no element of it is.
inline constexpr QPoint bareSpot{40, 150};
