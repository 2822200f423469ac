// SPDX-License-Identifier: MIT
// An overlay with many pastilles opens in about the time that as many plain frames take, and follows the
// window's size within a frame of a display.
#include "interactiveoverlay.h"
#include "overlaymaterial.h"
#include "pair.h"
#include "subjects.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPixmap>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include <ctime>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
constexpr int someNodes = 200;
constexpr int moreNodes = 400;
constexpr QSize overlaySize(800, 600);

/// An overlay on show, with a picture and a catalogue of 500 functions.
class ShownOverlay
{
public:
    explicit ShownOverlay(int nodes)
        : m_document(overlayDocumentOf(nodes))
        , m_overlay(new InteractiveOverlay(&m_window))
    {
        QPixmap picture(640, 480);
        picture.fill(Qt::darkCyan);
        m_window.resize(overlaySize);
        m_overlay->resize(overlaySize);
        m_overlay->setBackgroundPixmap(picture);
        m_overlay->setExternalServices(catalogueOf(500));
        m_window.show();
        settle();
    }

    void load() { m_loaded = m_overlay->fromJson(m_document); }
    void empty()
    {
        m_overlay->fromJson(overlayDocumentOf(0));
        settle();
    }
    void resize()
    {
        const int shorter = (m_turns++ % 2) * 40;
        m_overlay->resize(overlaySize - QSize(shorter, shorter));
    }
    void resizeAndPaint()
    {
        resize();
        settle();
    }

    [[nodiscard]] bool holds(int nodes) const
    {
        return m_loaded && m_overlay->toJson().value("nodes"_L1).toArray().size() == nodes &&
               m_overlay->findChildren<ActionToolBox *>(Qt::FindDirectChildrenOnly).size() == nodes;
    }
    /// Whether a resize moves what lies on the picture.
    [[nodiscard]] bool follows()
    {
        const QWidget *last = m_overlay->findChildren<TouchArea *>(Qt::FindDirectChildrenOnly).constLast();
        const QRect before = last->geometry();
        resize();
        return last->geometry() != before;
    }

private:
    QJsonObject m_document;
    QWidget m_window;
    InteractiveOverlay *m_overlay;
    bool m_loaded = false;
    int m_turns = 1; // the first is another size already
};

/// Frames as anybody would make them first, without a style sheet.
class BareFrames
{
public:
    BareFrames()
    {
        m_window.resize(overlaySize);
        m_window.show();
        settle();
    }

    void fill()
    {
        for (int i = 0; i < someNodes; ++i)
            addFrame(i);
    }
    void empty()
    {
        m_ground = std::make_unique<QWidget>(&m_window);
        m_ground->resize(overlaySize);
        m_ground->show();
        settle();
    }

    [[nodiscard]] qsizetype frames() const
    {
        return m_ground->findChildren<QFrame *>(Qt::FindDirectChildrenOnly).size();
    }

private:
    void addFrame(int i)
    {
        auto *frame = new QFrame(m_ground.get());
        auto *combo = new QComboBox(frame);
        for (int entry = 0; entry < 10; ++entry)
            combo->addItem(u"Action %1"_s.arg(entry));
        auto *layout = new QHBoxLayout(frame);
        layout->addWidget(new QLabel(u"Action"_s, frame));
        layout->addWidget(combo);
        layout->addWidget(new QLineEdit(frame));
        frame->move(i % 20 * 40, i / 20 * 50);
        frame->show();
    }

    QWidget m_window;
    std::unique_ptr<QWidget> m_ground;
};

Side loads(ShownOverlay &overlay)
{
    return timed([&overlay] { overlay.load(); }, [&overlay] { overlay.empty(); });
}

void measureLoad(benchmark::State &state)
{
    ShownOverlay overlay(someNodes);
    BareFrames frames;
    compare(state, loads(overlay), timed([&frames] { frames.fill(); }, [&frames] { frames.empty(); }));
    require(state, overlay.holds(someNodes), "the overlay did not load its nodes");
    require(state, frames.frames() == someNodes, "the bare frames were not made");
}

void measureLoadGrowth(benchmark::State &state)
{
    ShownOverlay more(moreNodes);
    ShownOverlay some(someNodes);
    compare(state, loads(more), loads(some));
    require(state, more.holds(moreNodes) && some.holds(someNodes), "an overlay did not load its nodes");
}

Side resizes(ShownOverlay &overlay)
{
    overlay.load();
    return timed([&overlay] { overlay.resize(); }, settle);
}

Side paintedResizes(ShownOverlay &overlay)
{
    overlay.load();
    return timed([&overlay] { overlay.resizeAndPaint(); }, settle);
}

/// The processor time in which a picture at 60 Hz must be ready.
void spendOneFrame()
{
    const std::clock_t begin = std::clock();
    while (std::clock() - begin < CLOCKS_PER_SEC / 60) {}
}

auto overOneFrame(Side (*sideOf)(ShownOverlay &))
{
    return [sideOf](benchmark::State &state) {
        ShownOverlay overlay(someNodes);
        compare(state, sideOf(overlay), timed(spendOneFrame));
        require(state, overlay.holds(someNodes) && overlay.follows(), "the overlay did not follow its size");
    };
}

void measureResizeGrowth(benchmark::State &state)
{
    ShownOverlay more(moreNodes);
    ShownOverlay some(someNodes);
    compare(state, resizes(more), resizes(some));
    require(state, more.holds(moreNodes) && more.follows(), "the large overlay did not follow its size");
    require(state, some.holds(someNodes) && some.follows(), "the small overlay did not follow its size");
}
} // namespace

void addOverlayLoadPairs(const Suite &suite)
{
    suite.add({.name = "overlay/load",
               .what = "opening 200 pastilles with 500 functions, over 200 plain frames",
               .limit = 3.0,
               .rounds = 21},
              measureLoad);
    suite.add({.name = "overlay/load-growth",
               .what = "opening 400 pastilles, over opening 200",
               .limit = 2.2,
               .rounds = 21},
              measureLoadGrowth);
    suite.add({.name = "overlay/resize",
               .what = "a resize with 200 pastilles, over 1/60 s",
               .limit = 1.0,
               .rounds = 51},
              overOneFrame(resizes));
    suite.add({.name = "overlay/painted-resize",
               .what = "the same with its painting, over 1/60 s",
               .limit = {},
               .rounds = 51},
              overOneFrame(paintedResizes));
    suite.add({.name = "overlay/resize-growth",
               .what = "a resize with 400 pastilles, over one with 200",
               .limit = 2.2,
               .rounds = 51},
              measureResizeGrowth);
}
