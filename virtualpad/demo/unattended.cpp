// SPDX-License-Identifier: MIT
#include "unattended.h"

#include "places.h"
#include "road.h"
#include "virtualbench.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

using namespace Qt::StringLiterals;

namespace
{
void tell(QTextStream &out, qsizetype number, const Road::Step &step, const StepResult &result,
          qint64 elapsed)
{
    out << u"%1 %2. %3"_s.arg(result.happened ? u"ok  "_s : u"FAIL"_s)
               .arg(number, 2)
               .arg(QLatin1StringView(step.title), -50)
        << u"%1 ms"_s.arg(elapsed, 6) << Qt::endl;
    const QString lead = result.happened ? u"received "_s : u"did not come: "_s;
    out << "          " << lead << QString(result.words).replace(u'\n', u"\n          "_s) << Qt::endl;
}
} // namespace

int runUnattended(VirtualBench &bench, const Places &places)
{
    QTextStream out(stdout);
    const QString data = places.output + "/unattended"_L1;
    QDir(data).removeRecursively();
    QFile::remove(places.log());
    Road road(bench.pad(), {.hostProgram = places.hostProgram,
                            .plugin = places.plugin,
                            .data = data,
                            .log = places.log(),
                            .pictures = places.output});
    QElapsedTimer clock;
    qsizetype number = 0;
    for (const Road::Step &step : Road::steps()) {
        clock.start();
        const StepResult result = road.run(step);
        tell(out, ++number, step, result, clock.elapsed());
        if (!result.happened) {
            out << "\nThe demonstration stopped. What the host said stands in " << places.log() << Qt::endl;
            return 1;
        }
    }
    out << "\nThe document that the host runs for the profile:\n" << road.document();
    out << u"\nAll %1 steps happened. Pictures of the host's window: %2, its data: %3"_s.arg(
               QString::number(number), places.output, data)
        << Qt::endl;
    return 0;
}
