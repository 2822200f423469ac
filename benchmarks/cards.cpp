// SPDX-License-Identifier: MIT
// A painted card costs the same however long the list is that it stands in.
#include "cardcontent.h"
#include "cardpainter.h"
#include "deviceitemdelegate.h"
#include "gamepadsfile.h"
#include "linkerdevicemodel.h"
#include "pair.h"
#include "subjects.h"
#include "testhome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>

using namespace Qt::StringLiterals;

namespace
{
constexpr QSize cardSize(300, 240);
constexpr int visibleCards = 4;
constexpr int manyCards = 1000;

QString picture()
{
    const QString path = temporaryHome() + "/picture.png"_L1;
    QImage image(256, 256, QImage::Format_ARGB32);
    image.fill(Qt::darkCyan);
    if (!image.save(path))
        qFatal("%s cannot be written", qUtf8Printable(path));
    return path;
}

/// Remembers `count` gamepads that are away, in a context of their own, whose name is returned.
QString rememberedIn(int count)
{
    const QString image = picture();
    QJsonObject devices;
    for (int i = 0; i < count; ++i) {
        devices[u"gp:%1"_s.arg(i)] = QJsonObject{
            {u"deviceId"_s, QString::number(i)},
            {u"vendorIdHex"_s, u"45e"_s},
            {u"productIdHex"_s, QString::number(0x100 + i, 16)},
            {u"name"_s, u"Remembered gamepad %1"_s.arg(i)},
            {u"imagePath"_s, image},
            {u"kv"_s, QJsonObject{{u"nameOverride"_s, u"Gamepad %1 of the workshop"_s.arg(i)}}},
        };
    }
    const QString context = u"%1-cards"_s.arg(count);
    const QString path = gamepadsFilePath(context);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QJsonDocument(QJsonObject{{u"devices"_s, devices}, {u"lastCount"_s, count}}).toJson()) <=
            0)
        qFatal("%s cannot be written", qUtf8Printable(path));
    return context;
}

class CountingDelegate : public DeviceItemDelegate
{
public:
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++m_painted;
        DeviceItemDelegate::paint(painter, option, index);
    }

    [[nodiscard]] int painted() const { return m_painted; }

private:
    mutable int m_painted = 0;
};

/// A list of `count` gamepads on show, with room for four cards.
class ShownList
{
public:
    explicit ShownList(int count)
        : m_model(rememberedIn(count), nullptr)
    {
        m_view.setFrameShape(QFrame::NoFrame);
        // A longer list would lose the width of a scroll bar.
        m_view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_view.setModel(&m_model);
        m_view.setItemDelegate(&m_delegate);
        m_view.resize(cardSize.width(), visibleCards * cardSize.height());
        m_view.show();
        m_view.scrollTo(m_model.index(count / 2), QAbstractItemView::PositionAtTop);
        QApplication::processEvents();
    }

    void repaint() { m_view.viewport()->repaint(); }

    [[nodiscard]] int rows() const { return m_model.rowCount(); }

    [[nodiscard]] int cardsOfOneRepaint()
    {
        const int before = m_delegate.painted();
        repaint();
        return m_delegate.painted() - before;
    }

private:
    LinkerDeviceModel m_model;
    CountingDelegate m_delegate;
    QListView m_view;
};

Side repaints(ShownList &list)
{
    return repeated([&list] { list.repaint(); }, visibleCards);
}

void measureLongList(benchmark::State &state)
{
    ShownList longList(manyCards);
    ShownList shortList(visibleCards);
    compare(state, repaints(longList), repaints(shortList));
    require(state, longList.rows() == manyCards && shortList.rows() == visibleCards,
            "a list did not remember its gamepads");
    require(state,
            longList.cardsOfOneRepaint() == visibleCards && shortList.cardsOfOneRepaint() == visibleCards,
            "a list did not paint the cards on show");
}

/// A picture of a card's size to paint on.
class Canvas
{
public:
    Canvas()
        : m_image(cardSize, QImage::Format_ARGB32_Premultiplied)
    {}

    template <typename Paint>
    void with(Paint paint)
    {
        QPainter painter(&m_image);
        paint(&painter);
    }

    template <typename Paint>
    [[nodiscard]] QImage after(Paint paint)
    {
        m_image.fill(Qt::transparent);
        with(paint);
        return m_image.copy();
    }

private:
    QImage m_image;
};

void measureOneCard(benchmark::State &state)
{
    const LinkerDeviceModel model(rememberedIn(1), nullptr);
    const DeviceItemDelegate delegate;
    QStyleOptionViewItem option;
    option.rect = QRect({}, cardSize);
    const QModelIndex index = model.index(0);
    const CardContent content = readCard(index, findCardRoles(model.roleNames()));

    const auto ours = [&](QPainter *painter) { delegate.paint(painter, option, index); };
    const auto bare = [&](QPainter *painter) {
        paintCard(painter, option.rect, content, {.font = option.font}, {});
    };
    Canvas canvas;
    compare(state, repeated([&] { canvas.with(ours); }), repeated([&] { canvas.with(bare); }));
    const QImage card = canvas.after(ours);
    require(state, card != canvas.after([](QPainter *) {}), "nothing was painted");
    require(state, card == canvas.after(bare), "the two sides do not paint the same card");
}
} // namespace

void addCardPairs(const Suite &suite)
{
    suite.add({.name = "cards/one", .what = "a card painted from its row, over painting alone", .limit = {}},
              measureOneCard);
    suite.add({.name = "cards/thousand-rows",
               .what = "a card in a list of 1,000, over one in a list of 4",
               .limit = 1.1},
              measureLongList);
}
