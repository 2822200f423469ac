// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the command line asks for.
struct HostOptions
{
    QString plugin;     ///< the plugin's file; where it stands beside this program when not given
    QString context;    ///< handed to the plugin's model
    QString services;   ///< a JSON file with the host's services; the built-in sample when empty
    QString data;       ///< where this run keeps its data; the user's own folder when empty
    QString screenshot; ///< a picture of the window goes here, then the program ends; empty for none
    bool headless = false;
    bool report = false;
    bool commands = false;

    /// Text to show instead of running: help, or what is wrong with the command line.
    QString message;
    bool isWrong = false;
};

/// Reads the arguments, the program's own name included. Needs an application object.
HostOptions parseHostOptions(const QStringList &arguments);
