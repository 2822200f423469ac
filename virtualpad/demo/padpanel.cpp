// SPDX-License-Identifier: MIT
#include "padpanel.h"

#include "stickpad.h"
#include "virtualpad.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr int buttonColumns = 6;

QGroupBox *group(const QString &title, QWidget *content)
{
    auto *box = new QGroupBox(title);
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(content, 0, Qt::AlignCenter);
    return box;
}

QPushButton *momentary(const QString &text)
{
    auto *button = new QPushButton(text);
    button->setFixedSize(42, 36);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}
} // namespace

PadPanel::PadPanel(VirtualPad &pad, PadShape shape, QWidget *parent)
    : QWidget(parent)
    , m_pad(pad)
    , m_shape(std::move(shape))
    , m_plug(new QPushButton)
    , m_controls(new QWidget)
{
    m_plug->setCheckable(true);
    connect(m_plug, &QPushButton::toggled, this, [this](bool plugged) {
        if (plugged)
            m_pad.plug(m_shape);
        else
            m_pad.unplug();
        showPlug();
    });

    auto *controls = new QGridLayout(m_controls);
    controls->setContentsMargins(0, 0, 0, 0);
    controls->addWidget(stick(u"Left stick"_s, PadAxis::LeftX, PadAxis::LeftY), 0, 0);
    controls->addWidget(hat(), 0, 1);
    controls->addWidget(stick(u"Right stick"_s, PadAxis::RightX, PadAxis::RightY), 0, 2);
    controls->addWidget(trigger(u"Left trigger"_s, PadAxis::LeftTrigger), 1, 0);
    controls->addWidget(buttons(), 1, 1);
    controls->addWidget(trigger(u"Right trigger"_s, PadAxis::RightTrigger), 1, 2);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QString::fromStdString(m_shape.name)));
    layout->addWidget(m_controls);
    layout->addWidget(m_plug);
    showPlug();
}

void PadPanel::showEvent(QShowEvent *event)
{
    showPlug();
    QWidget::showEvent(event);
}

void PadPanel::showPlug()
{
    const bool plugged = m_pad.isPlugged();
    const QSignalBlocker silence(m_plug);
    m_plug->setChecked(plugged);
    m_plug->setText(plugged ? u"Pull the plug"_s : u"Plug in"_s);
    m_controls->setEnabled(plugged);
}

QWidget *PadPanel::stick(const QString &name, PadAxis across, PadAxis along)
{
    const auto rest = [this](PadAxis axis) { return m_shape.axes.at(std::size_t(axis)).rest; };
    auto *knob = new StickPad({rest(across), rest(along)});
    connect(knob, &StickPad::moved, this, [this, across, along](QPointF position) {
        m_pad.setAxis(across, position.x());
        m_pad.setAxis(along, position.y());
    });
    return group(name, knob);
}

QWidget *PadPanel::trigger(const QString &name, PadAxis axis)
{
    auto *slider = new QSlider(Qt::Horizontal);
    slider->setRange(-100, 100);
    slider->setValue(-100);
    slider->setFixedWidth(130);
    connect(slider, &QSlider::valueChanged, this, [this, axis](int value) { m_pad.setAxis(axis, value); });
    connect(slider, &QSlider::sliderReleased, slider, [slider] { slider->setValue(-100); });
    return group(name, slider);
}

QWidget *PadPanel::hat()
{
    auto *cross = new QWidget;
    auto *grid = new QGridLayout(cross);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    const auto add = [&](const QString &text, int row, int column, PadAxis axis, double position) {
        auto *button = momentary(text);
        connect(button, &QPushButton::pressed, this,
                [this, axis, position] { m_pad.setAxis(axis, position); });
        connect(button, &QPushButton::released, this, [this, axis] { m_pad.setAxis(axis, 0.0); });
        grid->addWidget(button, row, column);
    };
    add(u"▲"_s, 0, 1, PadAxis::HatY, -100.0);
    add(u"◀"_s, 1, 0, PadAxis::HatX, -100.0);
    add(u"▶"_s, 1, 2, PadAxis::HatX, 100.0);
    add(u"▼"_s, 2, 1, PadAxis::HatY, 100.0);
    return group(u"Hat"_s, cross);
}

QWidget *PadPanel::buttons()
{
    auto *field = new QWidget;
    auto *grid = new QGridLayout(field);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(4);
    for (int number = 0; number < m_shape.buttonCount; ++number) {
        auto *button = momentary(QString::number(number));
        connect(button, &QPushButton::pressed, this, [this, number] { m_pad.setButton(number, true); });
        connect(button, &QPushButton::released, this, [this, number] { m_pad.setButton(number, false); });
        grid->addWidget(button, number / buttonColumns, number % buttonColumns);
    }
    return group(u"Buttons"_s, field);
}
