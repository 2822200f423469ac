// SPDX-License-Identifier: MIT
#include "wholetext.h"

#include <QtCore/QVariant>
#include <QtWidgets/QLineEdit>

namespace
{
constexpr const char *givenText = "givenText";
} // namespace

void showWhole(QLineEdit *edit, const QString &text)
{
    // Before it is shown, since who listens asks for it.
    edit->setProperty(givenText, text.size() > edit->maxLength() ? QVariant(text) : QVariant());
    edit->setText(text);
}

QString wholeText(const QLineEdit *edit)
{
    const QString shown = edit->text();
    if (shown.size() < edit->maxLength() || edit->isModified())
        return shown;
    const QString given = edit->property(givenText).toString();
    return given.startsWith(shown) ? given : shown;
}
