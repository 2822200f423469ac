// SPDX-License-Identifier: MIT
#include "commands.h"

#include "devicelist.h"
#include "hostsession.h"
#include "hostwindow.h"
#include "services.h"
#include "widgetsearch.h"
#include "words.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QCoreApplication>
#include <QtCore/QJsonDocument>
#include <QtCore/QMetaProperty>
#include <QtCore/QSocketNotifier>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

#include <array>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
// JSON's bare values stand alone here: true, 12, "text".
QVariant parseValue(const QString &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(u"[%1]"_s.arg(text).toUtf8());
    return document.array().at(0).toVariant();
}

QString unless(bool ok, const QString &problem)
{
    return ok ? QString() : problem;
}
} // namespace

Commands::Commands(HostSession &session, HostWindow &window, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_window(window)
{}

bool Commands::listen()
{
#ifdef Q_OS_UNIX
    m_notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &Commands::readInput);
    return true;
#else
    return false;
#endif
}

void Commands::readInput()
{
#ifdef Q_OS_UNIX
    std::array<char, 4096> buffer{};
    const auto count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        m_notifier->setEnabled(false);
        QCoreApplication::quit();
        return;
    }
    m_pending.append(buffer.data(), count);
    for (qsizetype end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n')) {
        const QString line = QString::fromUtf8(m_pending.first(end));
        m_pending.remove(0, end + 1);
        run(line);
    }
#endif
}

void Commands::run(const QString &line)
{
    QString rest = line.trimmed();
    if (rest.isEmpty())
        return;
    const QString word = takeWord(rest);
    if (word == "hand"_L1)
        work(line.trimmed(), rest);
    else
        Q_EMIT done(line.trimmed(), carryOut(word, rest));
}

// Whoever commands waits for each answer, so one gesture is under way at a time.
void Commands::work(const QString &line, const QString &gesture)
{
    connect(
        &m_hand, &Hand::done, this, [this, line](const QString &problem) { Q_EMIT done(line, problem); },
        Qt::SingleShotConnection);
    m_hand.perform(gesture);
}

QString Commands::carryOut(const QString &word, const QString &rest)
{
    if (word == "quit"_L1) {
        QCoreApplication::quit();
        return {};
    }
    if (word == "configure"_L1) {
        m_window.configure();
        return {};
    }
    if (word == "screenshot"_L1)
        return unless(m_window.grab().save(rest), u"the picture cannot be written"_s);
    if (word == "services"_L1) {
        const ServicesFile services = readServices(rest);
        if (services.problem.isEmpty())
            m_session.handServices(services.object);
        return services.problem;
    }
    QString tail = rest;
    const QString subject = takeWord(tail);
    if (word == "invoke"_L1) {
        QWidget *widget = findInReach(subject);
        return unless(widget && QMetaObject::invokeMethod(widget, tail.toLatin1().constData()),
                      u"there is no such widget in reach, or it has no such method"_s);
    }
    if (word == "property"_L1) {
        const QVariant value = parseValue(tail);
        const bool exists =
            m_session.model()->metaObject()->indexOfProperty(subject.toLatin1().constData()) >= 0;
        const bool taken = exists && m_session.model()->setProperty(subject.toLatin1().constData(), value);
        m_window.showProperties();
        return unless(taken, u"the list has no such property, or does not take that value"_s);
    }

    const int row = m_session.rowOf(subject);
    if (row < 0)
        return u"no row has the key \"%1\", or there is no command \"%2\""_s.arg(subject, word);
    if (word == "select"_L1 || word == "deselect"_L1) {
        m_session.setSelected(subject, word == "select"_L1);
        return {};
    }
    if (word == "click"_L1) {
        m_window.list().click(row);
        return {};
    }
    if (word == "forget"_L1)
        return unless(m_session.forget(subject), u"the list refused"_s);
    if (word == "rename"_L1)
        return unless(m_session.setRowData(row, "name", tail), u"the list refused"_s);
    if (word == "write"_L1) {
        const QString name = takeWord(tail);
        return unless(m_session.write(subject, name, parseValue(tail)), u"the row is not selected"_s);
    }
    return u"there is no command \"%1\""_s.arg(word);
}
