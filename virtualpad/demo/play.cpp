// SPDX-License-Identifier: MIT
#include "play.h"

#include "padpanel.h"
#include "places.h"
#include "road.h"
#include "sampleprofile.h"
#include "theme.h"
#include "virtualbench.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTextStream>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTabWidget>

#include <csignal>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr int endMs = 5000;

PadShape secondPad()
{
    PadShape shape = twoStickPad("Second pad");
    shape.productId = 0x0002;
    return shape;
}

// Where it covers least of the host's window.
void showInCorner(QWidget &window)
{
    window.adjustSize();
    const QRect space = window.screen()->availableGeometry();
    window.move(space.right() - window.frameGeometry().width(),
                space.bottom() - window.frameGeometry().height());
    window.show();
}
} // namespace

int play(VirtualBench &bench, const Places &places)
{
    const QString name = QString::fromStdString(demoPad().name);
    if (!QFileInfo::exists(places.data()) && writeSampleProfile(places.data(), name).isEmpty()) {
        QTextStream(stderr) << "gamepad-demo: " << places.data() << " cannot be written." << Qt::endl;
        return 2;
    }

    QApplication::setStyle(u"Fusion"_s);
    QApplication::setPalette(theme::palette());
    QTabWidget panels;
    panels.setWindowTitle(u"Virtual pads"_s);
    panels.addTab(new PadPanel(bench.pad(0), demoPad()), u"Pad 1"_s);
    panels.addTab(new PadPanel(bench.pad(1), secondPad()), u"Pad 2"_s);
    bench.pad(0).plug(demoPad());

    // The host ends when its standard input does, however this program ends.
    QProcess host;
    host.setProgram(places.hostProgram);
    host.setArguments({u"--plugin"_s, places.plugin, u"--data"_s, places.data(), u"--context"_s, u"demo"_s,
                       u"--commands"_s});
    host.setStandardErrorFile(places.log());
    host.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    QObject::connect(&host, &QProcess::finished, &panels, [](int code) { QApplication::exit(code); });
    QObject::connect(&host, &QProcess::errorOccurred, &panels, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            QTextStream(stderr) << "gamepad-demo: " << host.errorString() << Qt::endl;
            QApplication::exit(2);
        }
    });
    host.start();
    showInCorner(panels);
    const int code = QApplication::exec();
    if (code != 0 && host.state() == QProcess::NotRunning)
        QTextStream(stderr) << "gamepad-demo: the host ended with " << code << "; see " << places.log()
                            << Qt::endl;

    host.closeWriteChannel();
    if (host.state() != QProcess::NotRunning && !host.waitForFinished(endMs)) {
        host.kill();
        host.waitForFinished();
    }
    return code;
}
