// SPDX-License-Identifier: MIT
#pragma once

#include "actiondesignerwidget.h"
#include "actiontaskblockwidget.h"
#include "argumentform.h"
#include "entries.h"
#include "testhome.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QStandardPaths>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <memory>

inline QString userFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           QStringLiteral("/Gamepads/actions.json");
}

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QJsonObject action(const QString &name, const QJsonArray &tasks = {})
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("tasks"), tasks}};
}

/// One designer on a window of its own, made from the user's file.
class DesignerStage
{
public:
    /// Writes the user's file first.
    explicit DesignerStage(const QJsonArray &actions)
    {
        writeFile(userFile(), QJsonDocument(actions).toJson());
        open();
    }

    /// Takes the user's file as it is.
    DesignerStage() { open(); }

    void show()
    {
        m_designer->resize(1000, 700);
        m_designer->show();
        QVERIFY(QTest::qWaitForWindowActive(m_designer.get()));
    }

    void close() { m_designer.reset(); }

    ActionDesignerWidget &designer() { return *m_designer; }
    QListWidget &list() { return child<QListWidget>("actionsList"); }
    QLineEdit &name() { return child<QLineEdit>("actionNameEdit"); }
    QScrollArea &scroll() { return child<QScrollArea>("stepsScrollArea"); }
    QTimer &timer() { return *m_designer->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly); }

    QToolButton &addButton() { return child<QToolButton>("primaryBtn", "designerLeftPanel"); }
    QToolButton &duplicateButton() { return child<QToolButton>("secondaryBtn"); }
    QToolButton &deleteButton() { return child<QToolButton>("dangerBtn"); }
    QToolButton &addStepButton() { return child<QToolButton>("primaryBtn", "designerRightPanel"); }

    /// The rows on show, in the order of the layout; those that wait for their deletion are not in it.
    QWidgetList rows()
    {
        QWidgetList rows;
        const QLayout *layout = scroll().widget()->layout();
        for (int i = 0; i < layout->count(); ++i)
            rows.append(layout->itemAt(i)->widget());
        return rows;
    }
    ActionTaskBlockWidget &card(qsizetype row)
    {
        return *rows().at(row)->findChild<ActionTaskBlockWidget *>();
    }
    QComboBox &combo(qsizetype row) { return *card(row).findChild<QComboBox *>(); }
    QLineEdit &when(qsizetype row)
    {
        return *card(row).findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QLineEdit &field(qsizetype row, qsizetype at)
    {
        return *card(row).findChild<ArgumentForm *>()->fields().at(at).edit;
    }
    QToolButton &button(qsizetype row, const QString &toolTip)
    {
        const auto buttons = rows().at(row)->findChildren<QToolButton *>();
        return **std::ranges::find(buttons, toolTip, &QToolButton::toolTip);
    }
    QToolButton &up(qsizetype row) { return button(row, QStringLiteral("Monter")); }
    QToolButton &down(qsizetype row) { return button(row, QStringLiteral("Descendre")); }
    QToolButton &remove(qsizetype row) { return button(row, QStringLiteral("Supprimer")); }

    QStringList listed()
    {
        QStringList names;
        for (int i = 0; i < list().count(); ++i)
            names.append(list().item(i)->text());
        return names;
    }
    QJsonArray actions() { return m_designer->actions(); }
    QJsonArray tasks(qsizetype at) { return actions().at(at)[QStringLiteral("tasks")].toArray(); }
    QStringList refs(qsizetype at)
    {
        QStringList refs;
        const QJsonArray all = tasks(at);
        for (const QJsonValue &task : all)
            refs.append(task[QStringLiteral("ref")].toString());
        return refs;
    }
    QString nameOf(qsizetype at) { return actions().at(at)[QStringLiteral("name")].toString(); }

    void pick(int row)
    {
        list().scrollToItem(list().item(row));
        click(*list().viewport(), list().visualItemRect(list().item(row)).center());
    }
    static void click(QWidget &widget) { click(widget, widget.rect().center()); }
    static void click(QWidget &widget, const QPoint &at)
    {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
    }
    static void type(QWidget &widget, const QString &text)
    {
        widget.setFocus();
        QTest::keyClicks(&widget, text);
    }
    /// What the timer would do by itself in a moment.
    void saveNow()
    {
        timer().stop();
        QVERIFY(QMetaObject::invokeMethod(m_designer.get(), "onSaveTimeout"));
    }
    static QJsonObject saved() { return QJsonDocument::fromJson(readFile(userFile())).object(); }
    static QJsonArray savedActions() { return saved().value(QStringLiteral("ref")).toArray(); }

private:
    void open() { m_designer = std::make_unique<ActionDesignerWidget>(); }

    template <typename T>
    T &child(const char *name, const char *panel = nullptr)
    {
        const QWidget *above = m_designer.get();
        if (panel)
            above = m_designer->findChild<QWidget *>(QLatin1StringView(panel));
        return *above->findChild<T *>(QLatin1StringView(name));
    }

    std::unique_ptr<ActionDesignerWidget> m_designer;
};
