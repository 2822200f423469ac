// SPDX-License-Identifier: MIT
// The configuration window of a person with many profiles and actions: until it is there, until another
// profile is there, and until a pressed button stands in the mapping.
#include "actionlinker.h"
#include "expiry.h"
#include "gamepaddefinder.h"
#include "gamepadmanager.h"
#include "jsonfiles.h"
#include "manetteconfigurationwidget.h"
#include "overlaymaterial.h"
#include "pair.h"
#include "profilesroot.h"
#include "profilestore.h"
#include "scriptedjoystick.h"
#include "subjects.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
constexpr int pastilles = 16;
constexpr std::size_t button = 3;
const auto padName = "Pad"_L1;

/// The same document for buttons, where the material is for axes.
QJsonObject forButtons(const QJsonObject &document)
{
    return QJsonDocument::fromJson(QJsonDocument(document).toJson().replace("joy_", "but_")).object();
}

QImage picture()
{
    QImage image(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * y / 1200, (x + y) / 5, (x ^ y) / 4));
    }
    return image;
}

struct Size
{
    int profiles;
    int actions;
    int functions;
};
constexpr Size full{.profiles = 50, .actions = 200, .functions = 500};
constexpr Size nearlyEmpty{.profiles = 1, .actions = 1, .functions = 1};

/// A data location of its own. Every profile is the pad's, with each of its pastilles bound.
class StoredWindow
{
public:
    explicit StoredWindow(const Size &size)
        : m_size(size)
        , m_services{{u"ref"_s, catalogueOf(size.functions)}}
    {
        enter();
        const QString root = makeProfilesRoot();
        const QImage image = picture();
        for (int i = 0; i < size.profiles; ++i)
            store(makeProfileFolder(root), image);
        write(root + "/actions.json"_L1, {{u"ref"_s, catalogueOf(size.actions)}});
    }
    Q_DISABLE_COPY_MOVE(StoredWindow)

    ~StoredWindow()
    {
        enter();
        QDir(profilesRootPath()).removeRecursively();
    }

    /// Makes these the documents that a window finds.
    void enter() const { QCoreApplication::setApplicationName(u"%1-window"_s.arg(m_size.profiles)); }
    [[nodiscard]] const QJsonObject &services() const { return m_services; }
    [[nodiscard]] int profiles() const { return m_size.profiles; }

private:
    static void write(const QString &path, const QJsonObject &document)
    {
        if (!writeJsonFile(path, document, nullptr, true))
            qFatal("%s cannot be written", qUtf8Printable(path));
    }

    void store(GamepadEntry entry, const QImage &image) const
    {
        entry.name = u"Gamepad"_s;
        entry.deviceName = padName;
        entry.imagePath = entry.dirPath + "/image.png"_L1;
        entry.overlayPath = entry.dirPath + "/overlay.json"_L1;
        if (!image.save(entry.imagePath) || !writeNewMeta(entry, nullptr))
            qFatal("%s cannot be written", qUtf8Printable(entry.dirPath));
        write(entry.overlayPath, forButtons(overlayDocumentOf(pastilles)));
        write(entry.dirPath + "/configActionGamepad.json"_L1,
              forButtons(mappingOf(pastilles, m_size.actions)));
    }

    Size m_size;
    QJsonObject m_services;
};

/// The pad, published and found, whose ticks come when they are asked for.
class Pad
{
public:
    Pad()
    {
        scripted::reset();
        GamepadManager *manager = GamepadManager::instance(&m_parent);
        manager->stopTimers();
        scripted::plug(0, scripted::restingPad(padName.data()));
        QMetaObject::invokeMethod(manager, "discoverDevices");
        m_device = manager->gamepads().constFirst();
    }

    /// To be called when a window has started the pad.
    void learnRest() const
    {
        for (int i = 0; i < 40; ++i)
            tick();
    }
    /// Each with the tick that reads it.
    void press() const { hold(true); }
    void release() const { hold(false); }

private:
    void hold(bool down) const
    {
        scripted::pad(0).buttons.set(button, down);
        tick();
    }
    void tick() const { expire(*m_device->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly)); }

    QObject m_parent;
    ControlManette *m_device = nullptr;
};

/// Counts how often a widget is painted.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget *widget)
        : QObject(widget)
    {
        widget->installEventFilter(this);
    }
    [[nodiscard]] int count() const { return m_count; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

/// The window, as the plugin makes it, painted once.
class ShownWindow
{
public:
    explicit ShownWindow(const StoredWindow &stored)
    {
        stored.enter();
        auto surface = std::make_unique<ManetteConfigurationWidget>();
        m_surface = surface.get();
        m_window.setCentralWidget(surface.release());
        m_surface->setServices(stored.services());
        m_list = m_surface->findChild<QListWidget *>("listWidget"_L1);
        m_paints = new PaintCount(m_list->viewport());
        m_window.resize(1023, 772);
        m_window.show();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] int paints() const { return m_paints->count(); }
    [[nodiscard]] int profiles() const { return m_list->count(); }
    [[nodiscard]] int row() const { return m_surface->findChild<GamepadDefinder *>()->currentRow(); }
    [[nodiscard]] ActionLinker &linker() { return *m_surface->findChild<ActionLinker *>(); }

    /// A person's click on a profile that is in view, with all that follows, painting included.
    void click(int row) const
    {
        const QRect rect = m_list->visualItemRect(m_list->item(row));
        const QPointF at(rect.left() + 20, rect.top() + 20);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, at, m_list->viewport()->mapToGlobal(at), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
            QCoreApplication::sendEvent(m_list->viewport(), &event);
        }
        QCoreApplication::processEvents();
    }

private:
    QMainWindow m_window;
    ManetteConfigurationWidget *m_surface = nullptr;
    QListWidget *m_list = nullptr;
    PaintCount *m_paints = nullptr;
};

/// Opens the window; the one of the round before is closed first, outside the measured time.
Side opening(const StoredWindow &stored, std::unique_ptr<ShownWindow> *window)
{
    return timed([&stored, window] { *window = std::make_unique<ShownWindow>(stored); },
                 [&stored, window] {
                     stored.enter();
                     window->reset();
                     settle();
                 });
}

bool shows(const ShownWindow &window, const StoredWindow &stored)
{
    return window.paints() > 0 && window.profiles() == stored.profiles();
}

void measureFirstFrame(benchmark::State &state)
{
    const Pad pad;
    const StoredWindow many(full);
    const StoredWindow few(nearlyEmpty);
    std::unique_ptr<ShownWindow> ofMany;
    std::unique_ptr<ShownWindow> ofFew;
    compare(state, opening(many, &ofMany), opening(few, &ofFew));
    require(state, shows(*ofMany, many) && shows(*ofFew, few), "a window did not show its profiles");
}

/// Goes to and fro between the first two profiles.
Side clicking(const ShownWindow &window)
{
    return repeated(
        [&window] {
            window.click(1);
            window.click(0);
        },
        2);
}

void measureProfileClick(benchmark::State &state)
{
    const Pad pad;
    const StoredWindow many(full);
    const StoredWindow few({.profiles = 2, .actions = 2, .functions = 2});
    const ShownWindow ofMany(many);
    const ShownWindow ofFew(few);
    const int before = ofMany.paints();
    compare(state, clicking(ofMany), clicking(ofFew));
    const bool painted = ofMany.paints() > before;
    ofMany.click(1);
    ofFew.click(1);
    require(state, painted && ofMany.row() == 1 && ofFew.row() == 1, "a click did not show the profile");
}

/// Binds the button to one of two actions in turns: clicked, pressed, written.
class Binding
{
public:
    explicit Binding(const StoredWindow &stored)
        : m_window(stored)
        , m_actions(m_window.linker().findChild<QListWidget *>("mappingActionsList"_L1))
        , m_saving(m_window.linker().findChild<QTimer *>("saveTimer"_L1))
    {
        m_pad.learnRest();
    }

    void operator()()
    {
        Q_EMIT m_actions->itemClicked(m_actions->item(++m_turn % 2));
        m_pad.press();
        m_pad.release();
        if (m_saving->isActive()) // a quarter of a second that is waited, not worked
            expire(*m_saving);
    }

    [[nodiscard]] QString lastAction() const { return m_actions->item(m_turn % 2)->text(); }

private:
    Pad m_pad;
    ShownWindow m_window;
    QListWidget *m_actions;
    QTimer *m_saving;
    int m_turn = 0;
};

/// The mapping of the profile on show, the first one.
QString firstMapping()
{
    const QDir root(profilesRootPath());
    return root.filePath(root.entryList(QDir::Dirs | QDir::NoDotAndDotDot).constFirst()) +
           "/configActionGamepad.json"_L1;
}

/// Reads a document, changes it, and writes it back.
void rewrite(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QJsonObject document = QJsonDocument::fromJson(file.readAll()).object();
    file.close();
    document["bridges"_L1] = forButtons(mappingOf(pastilles, full.actions)).value("bridges"_L1);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        file.write(QJsonDocument(document).toJson());
}

void measurePressToFile(benchmark::State &state)
{
    const StoredWindow stored(full);
    Binding bind(stored);
    const QString path = firstMapping();
    const QString bare = path + ".bare"_L1;
    QFile::copy(path, bare);
    compare(state, repeated([&bind] { bind(); }), repeated([&bare] { rewrite(bare); }));
    bind();
    const QJsonObject written = readJsonFile(path, nullptr, nullptr);
    require(state, written["bridges"_L1].toArray().at(button)["action"_L1].toString() == bind.lastAction(),
            "the binding is not in the file");
}
} // namespace

void addConfigWindowPairs(const Suite &suite)
{
    suite.add({.name = "window/first-frame",
               .what = "made and painted with 50 profiles, 200 actions, 500 functions, over with one of each",
               .limit = std::nullopt,
               .rounds = 15},
              measureFirstFrame);
    suite.add({.name = "window/profile-click",
               .what = "a click on a profile among 50 to its paint, over among 2",
               .limit = 1.5,
               .rounds = 61},
              measureProfileClick);
    suite.add({.name = "window/press-to-file",
               .what = "a pressed button to the written mapping, over reading and writing such a file",
               .limit = std::nullopt,
               .rounds = 61},
              measurePressToFile);
}
