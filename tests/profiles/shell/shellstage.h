// SPDX-License-Identifier: MIT
#pragma once

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "gamepaddefinder.h"
#include "interactiveoverlay.h"
#include "jsontext.h"
#include "manetteconfigurationwidget.h"
#include "profilesroot.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolButton>

/// The configuration surface over the temporary home. JSON stands with single quotes.
namespace stage
{
inline void write(const QString &path, const QByteArray &json)
{
    QFile file(path);
    const QByteArray text = QByteArray(json).replace('\'', '"');
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

inline QJsonObject read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

inline void writeActions(const QByteArray &list)
{
    write(profilesRootPath() + QStringLiteral("/actions.json"), "{'ref':" + list + '}');
}

inline void writeSystemConfig(const QByteArray &text)
{
    write(profilesBasePath() + QStringLiteral("/system/systemConfig.json"), text);
}

inline QString profilePath(const QString &file)
{
    return profilesRootPath() + QStringLiteral("/0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01/") + file;
}

/// A profile of the gamepad "Pad", of two pastilles.
inline void writeProfile(const QByteArray &bridges = "[]")
{
    write(profilePath(QStringLiteral("meta.json")),
          "{'type':'GamepadDefinderMeta','id':'0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01','name':'Manette',"
          "'deviceName':'Pad'}");
    write(profilePath(QStringLiteral("overlay.json")),
          "{'type':'InteractiveOverlay','version':2,'nodes':[{'title':'but_3'},{'title':'but_4'}]}");
    write(profilePath(QStringLiteral("configActionGamepad.json")), "{'bridges':" + bridges + '}');
}

inline QJsonArray storedBridges()
{
    return read(profilePath(QStringLiteral("configActionGamepad.json")))[QLatin1StringView("bridges")]
        .toArray();
}

inline QStringList titlesOn(const InteractiveOverlay &overlay)
{
    QStringList titles;
    const QJsonArray nodes = overlay.toJson()[QLatin1StringView("nodes")].toArray();
    for (const QJsonValue &node : nodes)
        titles.append(node[QLatin1StringView("title")].toString());
    return titles;
}

/// A shell with what it holds. It may go ahead of this object.
struct Shell
{
    QPointer<ManetteConfigurationWidget> widget = new ManetteConfigurationWidget;
    QPointer<GamepadDefinder> profiles = widget->findChild<GamepadDefinder *>();
    QPointer<ActionLinker> linker = widget->findChild<ActionLinker *>();
    QPointer<ActionDesignerWidget> designer = widget->findChild<ActionDesignerWidget *>();
    QPointer<InteractiveOverlay> linkersOverlay =
        linker->findChild<InteractiveOverlay *>(QStringLiteral("iteractiveoverlay"));

    Shell() = default;
    ~Shell() { delete widget; }
    Q_DISABLE_COPY_MOVE(Shell)

    [[nodiscard]] QToolButton *button(const QString &text) const
    {
        for (QToolButton *candidate : designer->findChildren<QToolButton *>()) {
            if (candidate->text() == text)
                return candidate;
        }
        return nullptr;
    }
    [[nodiscard]] QLineEdit *name() const
    {
        return designer->findChild<QLineEdit *>(QStringLiteral("actionNameEdit"));
    }
    /// An edit in the designer, which is saved a moment later.
    void edit() const { QTest::mouseClick(button(QStringLiteral("Dupliquer")), Qt::LeftButton); }
};
} // namespace stage
