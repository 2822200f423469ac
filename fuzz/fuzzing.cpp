// SPDX-License-Identifier: MIT
#include "fuzzing.h"

#include "testhome.h"

#include <QtWidgets/QApplication>

#include <cstdio>
#include <cstdlib>

namespace
{
void report(const char *what)
{
    std::fprintf(stderr, "finding: %s\n", what);
    std::abort();
}

// Our own messages know their file, since this is a debug build. Qt's own tell of a call that was wrong.
void judgeMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtDebugMsg || type == QtInfoMsg || context.file)
        return;
    const QByteArray message = text.toLocal8Bit();
    if (!message.startsWith("This plugin does not support "))
        report(message.constData());
}
} // namespace

// Qt keeps fonts and styles to the end of the process. What one input leaks is looked for after that input.
extern "C" const char *__asan_default_options()
{
    return "leak_check_at_exit=0";
}

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    enterTemporaryHome();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzzer";
    static char *arguments[] = {name, nullptr};
    // Never deleted: the fuzzer may leave while an input is under way.
    static const auto *const application = new QApplication(count, arguments);
    static_cast<void>(application);
    QApplication::setApplicationName(QStringLiteral("gamepad-fuzzer"));
    QApplication::setOrganizationName(QStringLiteral("velor"));
    qInstallMessageHandler(judgeMessage);
    return 0;
}

QJsonDocument jsonOf(const uint8_t *data, size_t size)
{
    return QJsonDocument::fromJson(
        QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
}

void mustHold(bool holds, const char *what)
{
    if (!holds)
        report(what);
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
