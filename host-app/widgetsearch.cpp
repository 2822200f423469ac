// SPDX-License-Identifier: MIT
#include "widgetsearch.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace
{
bool isCalled(const QWidget *widget, const QString &name)
{
    return widget->objectName() == name || widget->inherits(name.toLatin1().constData());
}

int depth(const QWidget *window)
{
    int depth = 0;
    for (; window; window = window->parentWidget())
        ++depth;
    return depth;
}

QList<QWidget *> shownInside(QWidget *widget)
{
    QList<QWidget *> shown;
    const QList<QWidget *> children = widget->findChildren<QWidget *>();
    for (QWidget *child : children) {
        if (child->isVisible() && child->window() == widget->window())
            shown.append(child);
    }
    return shown;
}
} // namespace

QWidget *windowOnTop()
{
    if (QWidget *dialog = QApplication::activeModalWidget())
        return dialog;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    // Without a window manager none is active; a window stands above the one that it belongs to.
    QWidget *top = nullptr;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->windowType() == Qt::Window && depth(window) >= depth(top))
            top = window;
    }
    return top;
}

QList<QWidget *> widgetsInReach()
{
    QWidget *top = windowOnTop();
    if (!top)
        return {};
    QList<QWidget *> widgets{top};
    widgets += shownInside(top);
    if (QApplication::activeModalWidget())
        return widgets;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != top && window->isVisible())
            widgets += QList{window} + shownInside(window);
    }
    return widgets;
}

QWidget *findInReach(const QString &name)
{
    QList<QWidget *> candidates = widgetsInReach();
    QWidget *found = nullptr;
    const QStringList parts = name.split(u'/');
    for (const QString &part : parts) {
        const QString wanted = part.section(u'#', 0, 0);
        qsizetype left = part.section(u'#', 1, 1).toLongLong();
        found = nullptr;
        for (QWidget *candidate : std::as_const(candidates)) {
            if (isCalled(candidate, wanted) && left-- == 0) {
                found = candidate;
                break;
            }
        }
        if (!found)
            return nullptr;
        candidates = shownInside(found);
    }
    return found;
}

QString dialogInFront()
{
    QWidget *dialog = QApplication::activeModalWidget();
    if (!dialog)
        return {};
    QStringList said;
    const QList<QWidget *> widgets = shownInside(dialog);
    for (QWidget *widget : widgets) {
        if (const auto *label = qobject_cast<QLabel *>(widget); label && !label->text().isEmpty())
            said.append(label->text());
        else if (const auto *field = qobject_cast<QLineEdit *>(widget))
            said.append(field->text());
    }
    return u"%1 \"%2\": %3"_s.arg(QLatin1StringView(dialog->metaObject()->className()), dialog->windowTitle(),
                                  said.join(u" | "_s));
}
