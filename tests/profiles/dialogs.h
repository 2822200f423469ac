// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMetaEnum>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <functional>
#include <utility>

/// Answers the dialogs of an operation one after the other, as a person does, while this object lives. One
/// that comes without an answer is noted like the others, and closed.
class Dialogs
{
public:
    using Answer = std::function<void(QWidget *)>;

    explicit Dialogs(QList<Answer> answers = {})
        : m_answers(std::move(answers))
    {
        m_timer.callOnTimeout(&m_timer, [this] { answerNext(); });
        m_timer.start(1);
    }

    /// What each dialog said since the last call: its kind, its title and its texts.
    QStringList take() { return std::exchange(m_seen, {}); }
    [[nodiscard]] qsizetype answersLeft() const { return m_answers.size(); }

    // Answers.
    static Answer type(const QString &text)
    {
        return [text](QWidget *dialog) {
            auto *edit = dialog->findChild<QLineEdit *>();
            edit->selectAll();
            QTest::keyClick(edit, Qt::Key_Delete);
            edit->insert(text);
            QTest::keyClick(edit, Qt::Key_Return);
        };
    }
    static Answer choose(const QString &path)
    {
        return [path](QWidget *dialog) {
            auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            edit->setText(path);
            QTest::keyClick(edit, Qt::Key_Return);
        };
    }
    static Answer pick(const QString &item)
    {
        return [item](QWidget *dialog) {
            dialog->findChild<QComboBox *>()->setCurrentText(item);
            QTest::keyClick(dialog, Qt::Key_Return);
        };
    }
    static Answer click(QMessageBox::StandardButton button)
    {
        return [button](QWidget *dialog) {
            if (auto *box = qobject_cast<QMessageBox *>(dialog))
                QTest::mouseClick(box->button(button), Qt::LeftButton);
        };
    }
    static Answer ok() { return click(QMessageBox::Ok); }
    static Answer escape()
    {
        return [](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
    }
    /// The same, after something happened behind the dialog.
    static Answer after(std::function<void()> event, Answer answer)
    {
        return [event = std::move(event), answer = std::move(answer)](QWidget *dialog) {
            const QPointer<QWidget> open = dialog;
            event();
            if (open)
                answer(open);
        };
    }

private:
    void answerNext()
    {
        const QPointer<QWidget> dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->isVisible() || dialog == m_last)
            return;
        m_last = dialog;
        m_seen.append(wordsOf(dialog));
        if (!m_answers.isEmpty())
            m_answers.takeFirst()(dialog);
        else if (dialog)
            dialog->close();
    }

    static QString wordsOf(const QWidget *dialog)
    {
        QStringList words;
        if (const auto *box = qobject_cast<const QMessageBox *>(dialog)) {
            words << QLatin1StringView(QMetaEnum::fromType<QMessageBox::Icon>().valueToKey(box->icon()))
                  << box->windowTitle() << box->text();
        } else if (const auto *input = qobject_cast<const QInputDialog *>(dialog)) {
            words << QStringLiteral("Input") << input->windowTitle() << input->labelText()
                  << (input->comboBoxItems().isEmpty() ? input->textValue()
                                                       : input->comboBoxItems().join(u','));
        } else if (const auto *file = qobject_cast<const QFileDialog *>(dialog)) {
            words << QStringLiteral("File") << file->windowTitle() << file->nameFilters().join(u';');
        } else {
            words << QLatin1StringView(dialog->metaObject()->className());
        }
        return words.join(QLatin1StringView(": "));
    }

    QTimer m_timer;
    QList<Answer> m_answers;
    QStringList m_seen;
    QPointer<QWidget> m_last;
};
