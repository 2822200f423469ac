// SPDX-License-Identifier: MIT
#include "wholetext.h"

#include <QtCore/QObject>
#include <QtWidgets/QLineEdit>

namespace
{
// A child of the field. A dynamic property would ask for more than Qt 6.9: the body of `setProperty` is
// inline and calls what no Qt before 6.10 exports.
class GivenText : public QObject
{
    Q_OBJECT

public:
    explicit GivenText(QLineEdit *edit)
        : QObject(edit)
    {}

    QString text;
};

GivenText *givenTextOf(const QLineEdit *edit)
{
    return edit->findChild<GivenText *>(Qt::FindDirectChildrenOnly);
}
} // namespace

void showWhole(QLineEdit *edit, const QString &text)
{
    // Before it is shown, since who listens asks for it.
    GivenText *given = givenTextOf(edit);
    if (text.size() <= edit->maxLength()) {
        delete given;
    } else {
        if (!given)
            given = new GivenText(edit);
        given->text = text;
    }
    edit->setText(text);
}

QString wholeText(const QLineEdit *edit)
{
    const QString shown = edit->text();
    if (shown.size() < edit->maxLength() || edit->isModified())
        return shown;
    const GivenText *given = givenTextOf(edit);
    return given && given->text.startsWith(shown) ? given->text : shown;
}

#include "wholetext.moc"
