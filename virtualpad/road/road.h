// SPDX-License-Identifier: MIT
#pragma once

#include "hostprocess.h"
#include "padshape.h"
#include "stepresult.h"

#include <QtCore/QString>

#include <memory>
#include <span>

class VirtualPad;

/// Where the road finds things and leaves things.
struct RoadSetup
{
    QString hostProgram;
    QString plugin;
    QString data;     ///< the host's data; must be empty or not exist for a first run
    QString log;      ///< what the host says on standard error is appended here
    QString pictures; ///< a picture of the host's window goes here after each step; empty for none
};

/// The product's main job from end to end: a virtual pad, SFML's own code, the built plugin in a host that
/// knows only the contract. Each step acts as a person does and then waits for what the host receives. The
/// steps build on each other: run them in order, and none after one that did not happen.
class Road
{
public:
    struct Step
    {
        const char *title;
        const char *picture; ///< name of its picture without suffix; none for null
        StepResult (Road::*run)();
        const char *camera = "screenshot"; ///< the host's command for its picture
    };

    Road(VirtualPad &pad, RoadSetup setup);

    [[nodiscard]] static std::span<const Step> steps();
    /// Runs the step and takes its picture.
    StepResult run(const Step &step);
    /// What the host runs for the profile that the road makes: the document on disk; empty before there is
    /// one.
    [[nodiscard]] QByteArray document() const;

private:
    StepResult startHost();
    StepResult plugIn();
    StepResult select();
    StepResult calibrate();
    StepResult moveStick();
    StepResult pullTrigger();
    StepResult pressButton();
    StepResult releaseButton();
    StepResult pullOut();
    StepResult returnPad();
    StepResult openWindow();
    StepResult makeProfile();
    StepResult learnButton();
    StepResult composeAction();
    StepResult bindButton();
    StepResult fireBridge();
    StepResult takeSnapshot();
    StepResult exportCopy();
    StepResult restart();
    StepResult useAfterRestart();
    StepResult endHost();

    [[nodiscard]] bool launch();
    StepResult sweep(PadAxis axis, const QString &key, double rest, double end, double expected);
    [[nodiscard]] HostProcess::Condition held(const QString &key, double value) const;
    StepResult awaitRest();
    [[nodiscard]] int selectedDevice() const;
    [[nodiscard]] bool letGo();
    [[nodiscard]] QString hand(const QStringList &gestures);
    [[nodiscard]] QString profileFile(const QString &name) const;
    StepResult awaitFiring(const QString &key, qsizetype from);

    VirtualPad &m_pad;
    RoadSetup m_setup;
    std::unique_ptr<HostProcess> m_host;
    QString m_profile;          ///< folder of the profile that the road makes
    qsizetype m_selectedAt = 0; ///< line from which on the present device's own lines come
};

/// The pad of the road: its sticks rest a little off the middle, as real ones do.
[[nodiscard]] PadShape demoPad();
