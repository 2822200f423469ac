// SPDX-License-Identifier: MIT
#include "scenes.h"

#include "actiontaskblockwidget.h"
#include "interactiveoverlay.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QImageReader>
#include <QtGui/QPixmap>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
// Between the light and the dark surfaces of hosts; what is painted white shows on it.
constexpr QColor ground(96, 112, 124);

std::unique_ptr<QWidget> makeWindow(const QSize &size)
{
    auto window = std::make_unique<QWidget>();
    QPalette palette = window->palette();
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, Qt::white);
    window->setPalette(palette);
    window->setFixedSize(size);
    window->move(40, 40);
    return window;
}

QJsonArray functions()
{
    return QJsonDocument::fromJson(R"([
        {"name": "Orienter", "params": [
            {"name": "vitesse", "preferredType": "double", "default": 1.5},
            {"name": "axe", "preferredType": "string", "default": "lacet"},
            {"name": "inverse", "preferredType": "bool"},
            {"name": "pas", "preferredType": "int", "default": 10}]},
        {"name": "Photo", "params": [{"name": "rafale", "preferredType": "bool"}]},
        {"name": "Centrer"}])")
        .array();
}

InteractiveOverlay *makeOverlay(QWidget *window)
{
    auto *overlay = new InteractiveOverlay(window);
    overlay->setGeometry(window->rect());
    overlay->setBackgroundPixmap(gamepadPicture(360));
    overlay->setBackgroundScaleMode(BackgroundScaleMode::Center);
    overlay->setExternalServices(functions());
    return overlay;
}

QJsonObject place(const QRect &pixels, const QSize &whole)
{
    return {{u"x"_s, 1.0 * pixels.x() / whole.width()},
            {u"y"_s, 1.0 * pixels.y() / whole.height()},
            {u"w"_s, 1.0 * pixels.width() / whole.width()},
            {u"h"_s, 1.0 * pixels.height() / whole.height()}};
}

QJsonObject node(const QString &title, const QPoint &pastille, const QPoint &toolBox, const QSize &whole)
{
    return {{u"title"_s, title},
            {u"pastille"_s, place(QRect(pastille, QSize(56, 56)), whole)},
            {u"toolbox"_s, place(QRect(toolBox, QSize(260, 36)), whole)}};
}

/// Places are fractions of the whole overlay, as version 1 had them.
void load(InteractiveOverlay *overlay, const QJsonArray &nodes)
{
    const QSize size = overlay->size();
    const bool loaded =
        overlay->fromJson({{u"type"_s, u"InteractiveOverlay"_s},
                           {u"version"_s, 1},
                           {u"overlaySize"_s, QJsonObject{{u"w"_s, size.width()}, {u"h"_s, size.height()}}},
                           {u"nodes"_s, nodes}});
    Q_ASSERT(loaded);
    Q_UNUSED(loaded)
}

TouchArea *makePastille(const QString &title, TouchArea::State state, const QSize &size)
{
    auto *pastille = new TouchArea;
    pastille->setEditMode(false);
    pastille->setTitle(title);
    pastille->setState(state);
    pastille->setFreeAspect(size.width() != size.height());
    pastille->setFixedSize(size);
    return pastille;
}
} // namespace

QPixmap gamepadPicture(int side)
{
    QImageReader drawing(QStringLiteral(GAMEPAD_ARTWORK "/gamepad.svg"));
    drawing.setScaledSize({side, side});
    return QPixmap::fromImage(drawing.read());
}

std::unique_ptr<QWidget> pastilleScene()
{
    auto window = makeWindow({560, 340});
    auto *grid = new QGridLayout(window.get());
    for (int row = 1; row <= 3; ++row)
        grid->setRowStretch(row, 1);
    const QString states[] = {u"Normal"_s, u"Listening"_s, u"Active"_s};
    const QString rows[] = {u"round"_s, u"oval"_s, u"in edit mode"_s};
    for (int row = 0; row < 3; ++row)
        grid->addWidget(new QLabel(rows[row]), row + 1, 0);
    for (int state = 0; state < 3; ++state) {
        const auto value = static_cast<TouchArea::State>(state);
        auto *edited = makePastille(u"but_7"_s, value, {80, 80});
        edited->setEditMode(true);
        grid->addWidget(new QLabel(states[state]), 0, state + 1, Qt::AlignCenter);
        grid->addWidget(makePastille(u"joy_3"_s, value, {56, 56}), 1, state + 1, Qt::AlignCenter);
        grid->addWidget(makePastille(u"Orienter"_s, value, {110, 48}), 2, state + 1, Qt::AlignCenter);
        grid->addWidget(edited, 3, state + 1, Qt::AlignCenter);
    }
    return window;
}

std::unique_ptr<QWidget> connectorScene()
{
    auto window = makeWindow({900, 460});
    InteractiveOverlay *overlay = makeOverlay(window.get());
    const QSize size = overlay->size();
    load(overlay,
         {node(u"joy_0"_s, {330, 180}, {20, 260}, size), node(u"but_2"_s, {500, 180}, {620, 250}, size),
          node(u"joy_4"_s, {422, 90}, {360, 360}, size)});
    overlay->applyActionToTitle(u"Orienter"_s, u"joy_0"_s);
    overlay->applyActionToTitle(u"Photo"_s, u"but_2"_s);
    overlay->applyActionToTitle(u"Centrer"_s, u"joy_4"_s);
    return window;
}

std::unique_ptr<QWidget> toolBoxScene()
{
    auto window = makeWindow({640, 190});
    auto *layout = new QVBoxLayout(window.get());
    const QString chosen[] = {u"none"_s, u"Orienter"_s, u"Zoomer"_s};
    for (const QString &name : chosen) {
        auto *box = new ActionToolBox;
        box->setExternalServices(functions());
        box->applyConfig({{u"ref"_s, name}});
        layout->addWidget(box, 0, Qt::AlignHCenter);
    }
    return window;
}

std::unique_ptr<QWidget> settingsScene()
{
    auto window = makeWindow({900, 460});
    InteractiveOverlay *overlay = makeOverlay(window.get());
    load(overlay, {node(u"joy_0"_s, {330, 150}, {500, 140}, overlay->size())});
    overlay->applyActionToTitle(u"Orienter"_s, u"joy_0"_s);
    return window;
}

std::unique_ptr<QWidget> taskCardScene()
{
    auto window = makeWindow({640, 430});
    QJsonArray params;
    QJsonObject args;
    for (int i = 1; i <= 10; ++i) {
        params.append(QJsonObject{{u"name"_s, u"parametre_%1"_s.arg(i)},
                                  {u"preferredType"_s, i % 2 == 0 ? u"int"_s : u"string"_s},
                                  {u"default"_s, i % 3 == 0 ? QJsonValue(i) : QJsonValue()}});
    }
    args.insert("parametre_1"_L1, u"transform(state(\"zoom\"))"_s);
    args.insert("parametre_4"_L1, 42);
    const QJsonArray catalogue{QJsonObject{{u"name"_s, u"gimbal.move"_s}, {u"params"_s, params}},
                               QJsonObject{{u"name"_s, u"gimbal.stop"_s}}};

    auto *layout = new QVBoxLayout(window.get());
    auto *many = new ActionTaskBlockWidget;
    many->setFunctions(catalogue);
    layout->addWidget(many);
    auto *none = new ActionTaskBlockWidget;
    none->setFunctions(catalogue);
    layout->addWidget(none);
    layout->addStretch();
    const bool shown =
        many->applyConfig({{u"ref"_s, u"gimbal.move"_s}, {u"args"_s, args}}) &&
        none->applyConfig({{u"ref"_s, u"gimbal.stop"_s}, {u"when"_s, u"state(\"armed\") == true"_s}});
    Q_ASSERT(shown);
    Q_UNUSED(shown)
    return window;
}
