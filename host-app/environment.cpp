// SPDX-License-Identifier: MIT
#include "environment.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace Qt::StringLiterals;

QString keepDataBelow(const QString &folder)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const QString base = QDir(folder).absolutePath();
    for (const auto &[variable, name] :
         {std::pair{"XDG_DATA_HOME", "data"_L1}, std::pair{"XDG_CONFIG_HOME", "config"_L1},
          std::pair{"XDG_CACHE_HOME", "cache"_L1}}) {
        const QString path = base + u'/' + name;
        if (!QDir().mkpath(path))
            return u"The folder %1 cannot be made; name one that can be written with --data."_s.arg(path);
        qputenv(variable, QFile::encodeName(path));
    }
    return {};
#else
    Q_UNUSED(folder)
    return u"--data works on Linux and the BSDs only; here the system says where data goes."_s;
#endif
}

QString settleDisplay(bool headless)
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return {};
    if (headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return {};
    }
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return u"There is no display. Set DISPLAY, run under xvfb-run, or use --headless-report."_s;
#endif
    return {};
}
