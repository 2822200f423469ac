// SPDX-License-Identifier: MIT
#include "road.h"

#include "reportlines.h"
#include "stepresult.h"
#include "virtualpad.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>

#include <array>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace
{
const auto slot = "gp:0"_L1;
constexpr std::array restPositions{3, -2, -100, -100, -4, 2, 0, 0};
constexpr int sweepSteps = 20;
constexpr int pointsOfARound = 40;

QString numbers(const QJsonArray &array)
{
    QStringList texts;
    for (const QJsonValue &value : array)
        texts.append(QString::number(value.toDouble()));
    return texts.join(u' ');
}

QString data(const QJsonObject &line)
{
    QStringList pieces;
    const QJsonArray keys = line["keys"_L1].toArray();
    const QJsonArray values = line["values"_L1].toArray();
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const QJsonValue value = values.at(i);
        const QString text = value.isBool() ? (value.toBool() ? u"true"_s : u"false"_s)
                                            : QString::number(value.toDouble(), 'f', 2);
        pieces.append(u"%1 = %2"_s.arg(keys.at(i).toString(), text));
    }
    return u"dataChanged(%1, %2) from interface #%3: %4"_s.arg(line["deviceId"_L1].toInt())
        .arg(line["catId"_L1].toInt())
        .arg(line["device"_L1].toInt())
        .arg(pieces.join(u", "_s));
}
} // namespace

PadShape demoPad()
{
    PadShape shape = twoStickPad("Demonstration pad");
    shape.axes.at(std::size_t(PadAxis::LeftX)).rest = 3.0;
    shape.axes.at(std::size_t(PadAxis::LeftY)).rest = -2.0;
    shape.axes.at(std::size_t(PadAxis::RightX)).rest = -4.0;
    shape.axes.at(std::size_t(PadAxis::RightY)).rest = 2.0;
    return shape;
}

Road::Road(VirtualPad &pad, RoadSetup setup)
    : m_pad(pad)
    , m_setup(std::move(setup))
{}

std::span<const Road::Step> Road::steps()
{
    static constexpr std::array table{
        Step{"The host starts and loads the plugin", "01-empty", &Road::startHost},
        Step{"A pad is plugged in and found", "02-found", &Road::plugIn},
        Step{"A click on its card selects it", "03-selected", &Road::select},
        Step{"It learns where its controls rest", "04-calibrated", &Road::calibrate},
        Step{"The left stick is moved", "05-stick", &Road::moveStick},
        Step{"The left trigger is pulled", "06-trigger", &Road::pullTrigger},
        Step{"A button is pressed", "07-button", &Road::pressButton},
        Step{"The button is let go", "08-released", &Road::releaseButton},
        Step{"The pad is pulled out", "09-unplugged", &Road::pullOut},
        Step{"The pad returns and is heard again", "10-returned", &Road::returnPad},
        Step{"The configuration window opens", "11-window", &Road::openWindow, "hand picture"},
        Step{"A profile is made and linked to the pad", "12-profile", &Road::makeProfile, "hand picture"},
        Step{"A pastille learns a button", "13-pastille", &Road::learnButton, "hand picture"},
        Step{"A snapshot of the profile is written", "14-snapshot", &Road::takeSnapshot, "hand picture"},
        Step{"A copy of the profile leaves as a file", "15-copy", &Road::exportCopy, "hand picture"},
        Step{"An action is composed of a host's function", "16-action", &Road::composeAction, "hand picture"},
        Step{"The action is bound by pressing the button", "17-binding", &Road::bindButton, "hand picture"},
        Step{"Pressed again, its bridge would fire", "18-fired", &Road::fireBridge},
        Step{"The host starts anew and remembers the selection", "19-restarted", &Road::restart},
        Step{"Pad and binding are remembered", "20-remembered", &Road::useAfterRestart},
        Step{"The host ends in order", nullptr, &Road::endHost},
    };
    return table;
}

StepResult Road::run(const Step &step)
{
    StepResult result = (this->*step.run)();
    if (!step.picture || m_setup.pictures.isEmpty() || !m_host)
        return result;
    const QString file = u"%1/%2.png"_s.arg(m_setup.pictures, QLatin1StringView(step.picture));
    const QString problem = m_host->command(u"%1 %2"_s.arg(QLatin1StringView(step.camera), file));
    if (!problem.isEmpty() && result.happened)
        return missed(u"a picture at %1: %2"_s.arg(file, problem));
    return result;
}

bool Road::launch()
{
    m_host = std::make_unique<HostProcess>(m_setup.hostProgram);
    m_selectedAt = 0;
    return m_host->start(
        {u"--plugin"_s, m_setup.plugin, u"--data"_s, m_setup.data, u"--context"_s, u"demo"_s}, m_setup.log);
}

int Road::selectedDevice() const
{
    return reported::onlyDevice(m_host->last("selection"_L1));
}

StepResult Road::startHost()
{
    QDir().mkpath(m_setup.data);
    if (!launch())
        return missed(u"the host with the plugin; see %1"_s.arg(m_setup.log));
    const QJsonObject plugin = m_host->last("plugin"_L1);
    return happened(u"a provider: \"%1\", family \"%2\""_s.arg(plugin["provider"_L1].toString(),
                                                               plugin["family"_L1].toString()));
}

StepResult Road::plugIn()
{
    m_pad.plug(demoPad());
    const QJsonArray controls{u"Axes|axis://8"_s, u"Buttons|btn://11"_s};
    const auto found = m_host->waitFor(reported::row(slot, {{"name"_L1, u"Demonstration pad"_s},
                                                            {"isConnected"_L1, true},
                                                            {"selected"_L1, false},
                                                            {"ip"_L1, u"VID:1209 PID:1"_s},
                                                            {"videoInterfaces"_L1, controls}}));
    if (!found)
        return missed(u"a connected row gp:0 of the pad with 8 axes and 11 buttons"_s);
    return happened(u"row gp:0 \"Demonstration pad\", VID:1209 PID:1, 8 axes, 11 buttons, not selected"_s);
}

StepResult Road::select()
{
    m_selectedAt = m_host->mark();
    const QString problem = m_host->command(u"click "_s + slot);
    if (!problem.isEmpty())
        return missed(u"a click on the card: "_s + problem);
    const auto selection = m_host->waitFor(reported::selection({slot}, u"connected"_s), m_selectedAt);
    if (!selection || !m_host->waitFor(reported::row(slot, {{"selected"_L1, true}}), m_selectedAt))
        return missed(u"selectedInterfacesChanged with the connected device of gp:0"_s);
    return happened(u"selectedInterfacesChanged with interface #%1 of gp:0, status connected"_s.arg(
        reported::onlyDevice(*selection)));
}

StepResult Road::awaitRest()
{
    const auto line = m_host->waitFor(
        reported::rest(selectedDevice(), {restPositions.begin(), restPositions.end()}), m_selectedAt);
    if (!line)
        return missed(u"the learned rest positions in deviceJson"_s);
    return happened(u"deviceJson of interface #%1 with bias %2"_s.arg(QString::number(selectedDevice()),
                                                                      numbers((*line)["bias"_L1].toArray())));
}

StepResult Road::calibrate()
{
    return awaitRest();
}

// Outside the middle a control that is held repeats its value at every tick; inside it is told once.
HostProcess::Condition Road::held(const QString &key, double value) const
{
    constexpr double middle = 8.0;
    constexpr int often = 3;
    return reported::times(std::abs(value) > middle ? often : 1,
                           reported::axis(selectedDevice(), key, value));
}

// Goes from `rest` to `end` in steps, each of which has to arrive before the next is made.
StepResult Road::sweep(PadAxis axis, const QString &key, double rest, double end, double expected)
{
    QJsonObject last;
    for (int step = 1; step <= sweepSteps; ++step) {
        const double part = double(step) / sweepSteps;
        const qsizetype from = m_host->mark();
        m_pad.setAxis(axis, rest + (end - rest) * part);
        const auto line = m_host->waitFor(held(key, expected * part), from);
        if (!line)
            return missed(u"dataChanged with %1 = %2"_s.arg(key).arg(expected * part));
        last = *line;
    }
    return happened(data(last));
}

// Two rounds of the left stick, each point of which has to arrive before the next is made.
StepResult Road::moveStick()
{
    QJsonObject last;
    for (int step = 0; step <= 2 * pointsOfARound; ++step) {
        const double angle = 2.0 * std::numbers::pi * step / pointsOfARound;
        const double across = 80.0 * std::cos(angle);
        const double along = 80.0 * std::sin(angle);
        const qsizetype from = m_host->mark();
        m_pad.setAxis(PadAxis::LeftX, across + restPositions.at(0));
        m_pad.setAxis(PadAxis::LeftY, along + restPositions.at(1));
        const double telling = std::abs(across) > std::abs(along) ? across : along;
        const QString key = std::abs(across) > std::abs(along) ? u"joy_0"_s : u"joy_1"_s;
        const auto line = m_host->waitFor(held(key, telling), from);
        if (!line)
            return missed(u"dataChanged with %1 = %2, again and again"_s.arg(key).arg(telling));
        last = *line;
    }
    return happened(data(last));
}

StepResult Road::pullTrigger()
{
    const StepResult result = sweep(PadAxis::LeftTrigger, u"joy_2"_s, -100.0, 100.0, 100.0);
    return result.happened ? sweep(PadAxis::LeftTrigger, u"joy_2"_s, -100.0, 50.0, 75.0) : result;
}

StepResult Road::pressButton()
{
    const qsizetype from = m_host->mark();
    m_pad.setButton(3, true);
    const auto line = m_host->waitFor(reported::button(selectedDevice(), u"but_3"_s, true), from);
    return line ? happened(data(*line)) : missed(u"dataChanged with but_3 = true"_s);
}

StepResult Road::releaseButton()
{
    const qsizetype from = m_host->mark();
    m_pad.setButton(3, false);
    const auto line = m_host->waitFor(reported::button(selectedDevice(), u"but_3"_s, false), from);
    return line ? happened(data(*line)) : missed(u"dataChanged with but_3 = false"_s);
}

StepResult Road::pullOut()
{
    const int device = selectedDevice();
    const qsizetype from = m_host->mark();
    m_pad.unplug();
    const auto selection = m_host->waitFor(reported::selection({slot}, u"noCom"_s), from);
    if (!selection || !m_host->waitFor(reported::row(slot, {{"isConnected"_L1, false}}), from))
        return missed(u"gp:0 still selected, not connected"_s);
    if (!m_host->waitFor(reported::of("gone"_L1, device), from))
        return missed(u"the end of interface #%1"_s.arg(device));
    const auto stand = m_host->waitFor(
        [device](const QJsonObject &line) {
            return line["what"_L1] == "selection"_L1 && reported::onlyDevice(line) > device;
        },
        from);
    if (!stand)
        return missed(u"a placeholder for the interface that went"_s);
    return happened(
        u"gp:0 stays selected; interface #%1 is gone, placeholder #%2 answers noCom"_s.arg(device).arg(
            reported::onlyDevice(*stand)));
}

StepResult Road::returnPad()
{
    m_selectedAt = m_host->mark();
    m_pad.plug(demoPad());
    const auto selection = m_host->waitFor(reported::selection({slot}, u"connected"_s), m_selectedAt);
    if (!selection)
        return missed(u"selectedInterfacesChanged with the device that returned"_s);
    const StepResult rest = awaitRest();
    if (!rest.happened)
        return rest;
    const StepResult moved = sweep(PadAxis::RightX, u"joy_4"_s, -4.0, 56.0, 60.0);
    if (!moved.happened)
        return moved;
    m_pad.setAxis(PadAxis::RightX, -4.0); // a control that is held is an input to who listens for one
    return happened(u"interface #%1, connected; after learning its rest anew:\n%2"_s.arg(
        QString::number(reported::onlyDevice(*selection)), moved.words));
}

StepResult Road::restart()
{
    if (!m_host->quit())
        return missed(u"an orderly end of the host"_s);
    if (!launch())
        return missed(u"the host, once more"_s);
    const auto selection = m_host->waitFor(reported::selection({slot}, u"connected"_s));
    if (!selection)
        return missed(u"gp:0 selected and connected without a click"_s);
    return happened(u"selectedInterfacesChanged with interface #%1 of gp:0, connected; nobody clicked"_s.arg(
        reported::onlyDevice(*selection)));
}

StepResult Road::useAfterRestart()
{
    const StepResult rest = awaitRest();
    const StepResult moved = rest.happened ? sweep(PadAxis::LeftX, u"joy_0"_s, 3.0, 93.0, 90.0) : rest;
    if (!moved.happened)
        return moved;
    const StepResult fired = fireBridge();
    return fired.happened ? happened(moved.words + u'\n' + fired.words) : fired;
}

StepResult Road::endHost()
{
    const bool ended = m_host->quit();
    m_host.reset();
    return ended ? happened(u"nothing more; it left with 0"_s) : missed(u"the host's end with 0"_s);
}
