// SPDX-License-Identifier: MIT
#pragma once

#include "interactiveoverlay.h"
#include "jsontext.h"
#include "nodedocument.h"
#include "pastillestage.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPixmap>
#include <QtTest/QSignalSpy>

/// An overlay of 640 by 480 pixels on a shown window, with a count of its `dirty` emissions.
class OverlayStage
{
public:
    OverlayStage()
    {
        m_window.resize(800, 600);
        m_overlay->setGeometry(0, 0, 640, 480);
        m_window.show();
        m_exposed = QTest::qWaitForWindowExposed(&m_window);
        QObject::connect(m_overlay, &InteractiveOverlay::dirty, m_overlay, [this] { ++m_dirty; });
    }
    ~OverlayStage() { delete m_overlay; }
    Q_DISABLE_COPY_MOVE(OverlayStage)

    [[nodiscard]] bool exposed() const { return m_exposed; }
    [[nodiscard]] InteractiveOverlay *operator->() const { return m_overlay; }
    [[nodiscard]] InteractiveOverlay *overlay() const { return m_overlay; }

    /// How often `dirty` was emitted since the last call.
    int takeDirty() { return std::exchange(m_dirty, 0); }

    /// Lets what waits for its deferred deletion go.
    static void deleteRetired() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// In the order of their creation; those that wait for their deletion stand among them.
    [[nodiscard]] QList<TouchArea *> pastilles() const { return children<TouchArea *>(); }
    [[nodiscard]] QList<ActionToolBox *> boxes() const { return children<ActionToolBox *>(); }
    [[nodiscard]] TouchArea *pastille(qsizetype i) const { return pastilles().value(i); }
    [[nodiscard]] ActionToolBox *box(qsizetype i) const { return boxes().value(i); }
    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (const TouchArea *area : pastilles())
            titles.append(area->title());
        return titles;
    }

    /// The node in the overlay's document.
    [[nodiscard]] QJsonObject node(qsizetype i) const
    {
        return m_overlay->toJson()[QLatin1StringView("nodes")][i].toObject();
    }
    [[nodiscard]] QString key(qsizetype i) const
    {
        return node(i)[QLatin1StringView("src")][QLatin1StringView("stringKey")].toString();
    }
    [[nodiscard]] QRectF place(qsizetype i, QLatin1StringView what) const
    {
        const QJsonObject rect = node(i)[what].toObject();
        return {rect[QLatin1StringView("x")].toDouble(), rect[QLatin1StringView("y")].toDouble(),
                rect[QLatin1StringView("w")].toDouble(), rect[QLatin1StringView("h")].toDouble()};
    }

    /// The function that each tool box names; empty for none.
    [[nodiscard]] QStringList functions() const
    {
        QStringList names;
        for (const ActionToolBox *box : boxes())
            names.append(box->config()[QLatin1StringView("ref")].toString());
        return names;
    }

    void load(const QByteArray &nodes)
    {
        QVERIFY(m_overlay->fromJson(documentWith(nodes)));
        deleteRetired();
    }

    // A person's mouse. Positions are the overlay's.
    void press(const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(m_window.windowHandle(), button, Qt::NoModifier, pos);
    }
    void moveTo(const QPoint &pos) { QTest::mouseMove(m_window.windowHandle(), pos); }
    void release(const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(m_window.windowHandle(), button, Qt::NoModifier, pos);
    }
    void drag(const QPoint &from, const QPoint &delta)
    {
        press(from);
        moveTo(from + delta);
        release(from + delta);
    }

private:
    template <typename Child>
    [[nodiscard]] QList<Child> children() const
    {
        return m_overlay ? m_overlay->findChildren<Child>(Qt::FindDirectChildrenOnly) : QList<Child>();
    }

    QWidget m_window;
    QPointer<InteractiveOverlay> m_overlay = new InteractiveOverlay(&m_window);
    bool m_exposed = false;
    int m_dirty = 0;
};

inline QPixmap bluePicture(int width, int height)
{
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::darkBlue);
    return pixmap;
}

/// A catalogue with functions that take an axis, a button, both and neither.
inline QJsonArray someFunctions()
{
    return array(R"([
        {'name':'Avancer','params':[{'name':'vitesse','preferredType':'double','default':1.5},
                                    {'name':'pas','preferredType':'int'}],
         'tasks':[{'ref':'motor.go','args':{'v':'param:vitesse'}}]},
        {'name':'Tirer','params':[{'name':'feu','preferredType':'bool'}],'tasks':[{'ref':'fire'}]},
        {'name':'Dire','params':[{'name':'texte','preferredType':'string'}]},
        {'name':'Centrer','tasks':[{'ref':'center'}]}])");
}
