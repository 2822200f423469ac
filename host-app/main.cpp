// SPDX-License-Identifier: MIT
#include "commands.h"
#include "environment.h"
#include "hostsession.h"
#include "hostwindow.h"
#include "nocodewatch.h"
#include "options.h"
#include "pluginfile.h"
#include "report.h"
#include "services.h"
#include "theme.h"

#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
enum ExitCode { Ok = 0, WrongCommandLine = 1, NoPlugin = 2, NoFileOrDisplay = 3 };

constexpr int screenshotAfterMs = 2000;

int fail(ExitCode code, const QString &message)
{
    QTextStream(stderr) << "gamepad-host: " << message << Qt::endl;
    return code;
}

// What needs no display comes before the application that needs one.
HostOptions readCommandLine(int argc, char *argv[])
{
    const QCoreApplication reader(argc, argv);
    return parseHostOptions(QCoreApplication::arguments());
}

void takeScreenshot(HostWindow &window, const QString &file)
{
    QTimer::singleShot(screenshotAfterMs, &window, [&window, file] {
        const bool saved = window.grab().save(file);
        QCoreApplication::exit(saved ? Ok : fail(NoFileOrDisplay, u"%1 cannot be written."_s.arg(file)));
    });
}

int run(const HostOptions &options)
{
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setPalette(theme::palette());

    const ServicesFile services = readServices(options.services);
    if (!services.problem.isEmpty())
        return fail(NoFileOrDisplay, services.problem);
    const LoadedProvider loaded = loadProvider(options.plugin);
    if (!loaded.provider)
        return fail(NoPlugin, loaded.problem);

    HostSession session(loaded.provider, options.context);
    NoCodeWatch documents(session);
    QFile output;
    std::unique_ptr<Report> report;
    if (options.report) {
        if (!output.open(stdout, QIODevice::WriteOnly))
            return fail(NoFileOrDisplay, u"Standard output cannot be written."_s);
        report = std::make_unique<Report>(session, documents, output);
        report->tellPlugin(options.plugin);
    }
    session.handServices(services.object);

    HostWindow window(session, documents);
    Commands commands(session, window);
    if (report)
        QObject::connect(&commands, &Commands::done, report.get(), &Report::tellDone);
    if (options.commands && !commands.listen())
        return fail(WrongCommandLine, u"--commands does not work on this system."_s);
    window.show();
    if (!options.screenshot.isEmpty())
        takeScreenshot(window, options.screenshot);
    return QApplication::exec();
}
} // namespace

int main(int argc, char *argv[])
{
    const HostOptions options = readCommandLine(argc, argv);
    if (options.isWrong)
        return fail(WrongCommandLine, options.message);
    if (!options.message.isEmpty()) {
        QTextStream(stdout) << options.message << Qt::endl;
        return Ok;
    }
    QString problem = options.data.isEmpty() ? QString() : keepDataBelow(options.data);
    if (problem.isEmpty())
        problem = settleDisplay(options.headless);
    if (!problem.isEmpty())
        return fail(NoFileOrDisplay, problem);

    // Qt has an option "plugin" of its own, so it gets to see the program's name alone.
    int nameOnly = 1;
    const QApplication application(nameOnly, argv);
    QApplication::setApplicationName(u"gamepad-host"_s);
    QApplication::setOrganizationName(u"velor"_s);
    return run(options);
}
