// SPDX-License-Identifier: MIT
// A painted card costs the same however long the list is that it stands in.
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

/// What one painting of the first row puts on a picture of a card's size.
class PaintedCard
{
public:
    explicit PaintedCard(const QAbstractItemModel &model)
        : m_index(model.index(0, 0))
        , m_image(cardSize, QImage::Format_ARGB32_Premultiplied)
    {
        m_option.rect = QRect({}, cardSize);
        m_option.state = QStyle::State_Enabled;
        m_image.fill(Qt::transparent);
    }

    void paint(const QAbstractItemDelegate &delegate)
    {
        QPainter painter(&m_image);
        delegate.paint(&painter, m_option, m_index);
    }

    [[nodiscard]] bool shows(const QAbstractItemDelegate &delegate)
    {
        m_image.fill(Qt::transparent);
        const QImage blank = m_image.copy();
        paint(delegate);
        return m_image != blank;
    }

private:
    QModelIndex m_index;
    QImage m_image;
    QStyleOptionViewItem m_option;
};

void measureOneCard(benchmark::State &state)
{
    const LinkerDeviceModel model(rememberedIn(1), nullptr);
    const DeviceItemDelegate ours;
    const QStyledItemDelegate bare;
    PaintedCard card(model);
    compare(state, repeated([&] { card.paint(ours); }), repeated([&] { card.paint(bare); }));
    require(state, card.shows(ours) && card.shows(bare), "nothing was painted");
}
} // namespace

void addCardPairs(const Suite &suite)
{
    suite.add({.name = "cards/one",
               .what = "one card, over the plain item that Qt paints of the same row",
               .limit = {}},
              measureOneCard);
    suite.add({.name = "cards/thousand-rows",
               .what = "a card in a list of 1,000, over one in a list of 4",
               .limit = 1.1},
              measureLongList);
}
