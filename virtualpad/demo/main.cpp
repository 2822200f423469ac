// SPDX-License-Identifier: MIT
#include "places.h"
#include "play.h"
#include "preload.h"
#include "unattended.h"
#include "virtualbench.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{
constexpr int wrongUse = 2;

struct Wishes
{
    Places places;
    bool unattended = false;
    std::optional<int> exitCode; ///< the program ends with it at once
};

int fail(const QString &message)
{
    QTextStream(stderr) << "gamepad-demo: " << message << Qt::endl;
    return wrongUse;
}

Wishes readCommandLine(int argc, char *argv[])
{
    const QCoreApplication reader(argc, argv);
    const QString folder = QCoreApplication::applicationDirPath();
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Shows the gamepad plugin at work on a virtual pad, in the stand-in host.\n\n"
        "Without --unattended it opens the host's window and a panel that drives two virtual pads.\n"
        "Ends with 0; 1 when a step of the unattended demonstration did not happen."_s);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Show this help."_s);
    const QCommandLineOption unattended(u"unattended"_s, u"Go the whole road with nobody watching."_s);
    const QCommandLineOption output(u"output"_s, u"Leave pictures, the host's log and data here."_s,
                                    u"folder"_s, QDir::cleanPath(folder + "/../demo"_L1));
    parser.addOptions({help, unattended, output});

    Wishes wishes;
    if (!parser.parse(QCoreApplication::arguments()) || !parser.positionalArguments().isEmpty()) {
        wishes.exitCode = fail(u"%1 See --help."_s.arg(parser.errorText()));
    } else if (parser.isSet(help)) {
        QTextStream(stdout) << parser.helpText();
        wishes.exitCode = 0;
    }
    wishes.unattended = parser.isSet(unattended);
    wishes.places = {.hostProgram = folder + "/gamepad-host"_L1,
                     .plugin = QDir::cleanPath(folder + "/../plugins/libGamepadInterface.so"_L1),
                     .output = QDir(parser.value(output)).absolutePath()};
    return wishes;
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}
} // namespace

int main(int argc, char *argv[])
{
    if (!enterMockedMachine(argv))
        return wrongUse;
    const Wishes wishes = readCommandLine(argc, argv);
    if (wishes.exitCode)
        return *wishes.exitCode;
    if (!QDir().mkpath(wishes.places.output))
        return fail(u"The folder %1 cannot be made."_s.arg(wishes.places.output));
    if (!hasDisplay()) {
        if (!wishes.unattended)
            return fail(u"There is no display. Set DISPLAY, or use --unattended."_s);
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    VirtualBench bench;
    if (wishes.unattended) {
        const QCoreApplication application(argc, argv);
        return runUnattended(bench, wishes.places);
    }
    const QApplication application(argc, argv);
    return play(bench, wishes.places);
}
