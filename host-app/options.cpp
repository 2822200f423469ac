// SPDX-License-Identifier: MIT
#include "options.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
const auto description =
    "A stand-in host: loads the gamepad plugin and shows what it sends.\n\n"
    "--report prints each thing that the host received as one line of JSON; \"what\" says which:\n"
    "  plugin, rows, selection, data, status, calibration, noCodeApp, fires, finished, gone, done\n\n"
    "--commands takes one command a line and answers each with a \"done\" line:\n"
    "  select USN | deselect USN | click USN      rename USN NAME | forget USN\n"
    "  property NAME JSON (of the list)           write USN NAME JSON (to the device)\n"
    "  services FILE | configure | screenshot FILE | quit\n"
    "  invoke WIDGET METHOD (what a widget of the plugin's window offers to hosts)\n"
    "  hand GESTURE (works any window by the names of its widgets)\n"
    "    click NAME [ITEM] | doubleclick NAME [ITEM] | rightclick NAME [ITEM] | press TEXT\n"
    "    type NAME TEXT | enter NAME TEXT | key NAME KEY | picture FILE\n\n"
    "Ends with 0, 1 for a wrong command line, 2 when the plugin cannot be loaded, 3 when a file or the\n"
    "display cannot be used."_L1;

// Beside the program in the build tree, then where an installation puts it.
QString pluginBeside(const QString &folder)
{
#ifdef Q_OS_WIN
    const QString name = u"libGamepadInterface.dll"_s;
#else
    const QString name = u"libGamepadInterface.so"_s;
#endif
    const QString built = QDir::cleanPath(folder + "/../plugins/"_L1 + name);
    const QString installed = QDir::cleanPath(folder + "/" GAMEPAD_INSTALLED_PLUGINS "/"_L1 + name);
    return !QFileInfo::exists(built) && QFileInfo::exists(installed) ? installed : built;
}
} // namespace

HostOptions parseHostOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Show this help."_s);
    const QCommandLineOption plugin(u"plugin"_s, u"Load this plugin file."_s, u"file"_s,
                                    pluginBeside(QCoreApplication::applicationDirPath()));
    const QCommandLineOption context(u"context"_s, u"Context name for the plugin's device list."_s, u"name"_s,
                                     u"stand-in"_s);
    const QCommandLineOption services(u"services"_s, u"Services object (JSON); a sample when not given."_s,
                                      u"file"_s);
    const QCommandLineOption data(u"data"_s, u"Keep all data below this folder."_s, u"folder"_s);
    const QCommandLineOption headless(u"headless-report"_s,
                                      u"As --report, without a window on any display."_s);
    const QCommandLineOption report(u"report"_s, u"Print what is received, one line of JSON each."_s);
    const QCommandLineOption commands(u"commands"_s, u"Take commands on standard input; its end quits."_s);
    const QCommandLineOption screenshot(u"screenshot"_s,
                                        u"Save a picture of the window after 2 s and quit."_s, u"file"_s);
    parser.addOptions({help, plugin, context, services, data, headless, report, commands, screenshot});

    HostOptions options;
    if (!parser.parse(arguments)) {
        options.message = parser.errorText();
        options.isWrong = true;
    } else if (!parser.positionalArguments().isEmpty()) {
        options.message = u"There is no argument \"%1\"."_s.arg(parser.positionalArguments().constFirst());
        options.isWrong = true;
    } else if (parser.isSet(help)) {
        options.message = parser.helpText();
    }
    if (options.isWrong)
        options.message += u"\nSee %1 --help."_s.arg(QFileInfo(arguments.value(0)).fileName());
    options.plugin = parser.value(plugin);
    options.context = parser.value(context);
    options.services = parser.value(services);
    options.data = parser.value(data);
    options.screenshot = parser.value(screenshot);
    options.headless = parser.isSet(headless);
    options.report = parser.isSet(report) || options.headless;
    options.commands = parser.isSet(commands);
    return options;
}
