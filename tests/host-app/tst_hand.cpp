// SPDX-License-Identifier: MIT
#include "hand.h"

#include "testmain.h"

#include <QtGui/QContextMenuEvent>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

class TestHand : public QObject
{
    Q_OBJECT

    std::unique_ptr<QWidget> m_window;
    QVBoxLayout *m_layout = nullptr;
    Hand m_hand{std::chrono::milliseconds(500)};

    template <typename Widget>
    Widget *add(const QString &name)
    {
        auto *widget = new Widget;
        widget->setObjectName(name);
        m_layout->addWidget(widget);
        return widget;
    }

    /// Performs the gestures, each after the answer to the one before, as a dialog holds up whoever opened
    /// it. What was wrong with the last; a text that no problem has where an answer did not come.
    QString does(QStringList gestures)
    {
        QString problem = u"no answer"_s;
        QObject performer;
        connect(&m_hand, &Hand::done, &performer, [&](const QString &answer) {
            problem = answer;
            if (!gestures.isEmpty())
                m_hand.perform(gestures.takeFirst());
        });
        const qsizetype all = gestures.size();
        const QSignalSpy answers(&m_hand, &Hand::done);
        m_hand.perform(gestures.takeFirst());
        return QTest::qWaitFor([&] { return answers.size() == all; }, 20'000) ? problem : u"no answer"_s;
    }

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        m_window = std::make_unique<QWidget>();
        m_layout = new QVBoxLayout(m_window.get());
        m_window->resize(600, 700);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    void cleanup() { m_window.reset(); }

    void aButtonIsClickedByNameAndByText()
    {
        auto *button = add<QPushButton>(u"go"_s);
        button->setText(u"&Go on"_s);
        const QSignalSpy clicks(button, &QPushButton::clicked);
        QCOMPARE(does({u"click go"_s}), QString());
        QCOMPARE(does({u"press Go on"_s}), QString());
        QCOMPARE(clicks.size(), 2);
    }

    void theThirdOfAClassAndOneInsideAnotherAreFound()
    {
        QStringList clicked;
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s}) {
            auto *button = add<QPushButton>(name);
            connect(button, &QPushButton::clicked, this, [&clicked, name] { clicked.append(name); });
        }
        auto *inner = new QPushButton(add<QFrame>(u"frame"_s));
        connect(inner, &QPushButton::clicked, this, [&clicked] { clicked.append(u"inner"_s); });
        inner->show();
        QCOMPARE(does({u"click QPushButton#2"_s}), QString());
        QCOMPARE(does({u"click frame/QPushButton"_s}), QString());
        QCOMPARE(clicked, QStringList({u"c"_s, u"inner"_s}));
    }

    void anEntryOfAListIsClickedAndATabIsOpened()
    {
        auto *list = add<QListWidget>(u"list"_s);
        for (int i = 0; i < 100; ++i)
            list->addItem(u"item %1"_s.arg(i));
        auto *tabs = add<QTabWidget>(u"tabs"_s);
        tabs->addTab(new QWidget, u"One"_s);
        tabs->addTab(new QWidget, u"Two"_s);
        const QSignalSpy clicks(list, &QListWidget::itemClicked);
        QCOMPARE(does({u"click list item 93"_s}), QString());
        QCOMPARE(list->currentRow(), 93);
        QCOMPARE(clicks.size(), 1);
        QCOMPARE(does({u"click tabs Two"_s}), QString());
        QCOMPARE(tabs->currentIndex(), 1);
    }

    void anEntryOfAComboIsChosenOnceAndAsAPersonDoes()
    {
        auto *combo = add<QComboBox>(u"combo"_s);
        combo->addItems({u"zero"_s, u"one"_s, u"two"_s, u"three"_s});
        combo->setCurrentIndex(3);
        QStringList chosen;
        connect(combo, &QComboBox::textActivated, this, [&](const QString &text) { chosen.append(text); });
        QCOMPARE(does({u"click combo one"_s}), QString());
        QCOMPARE(combo->currentText(), u"one"_s);
        QCOMPARE(chosen, QStringList{u"one"_s});
    }

    void aFieldIsTypedOverLetterByLetter()
    {
        auto *field = add<QLineEdit>(u"field"_s);
        field->setText(u"old"_s);
        const QSignalSpy edits(field, &QLineEdit::textEdited);
        QCOMPARE(does({u"type field Été à 3"_s}), QString());
        QCOMPARE(field->text(), u"Été à 3"_s);
        QVERIFY(edits.size() >= 7);
        const QSignalSpy returned(field, &QLineEdit::returnPressed);
        QCOMPARE(does({u"key field Return"_s}), QString());
        QCOMPARE(returned.size(), 1);
    }

    void aTextIsEnteredInOnePieceWithReturnBehindIt()
    {
        auto *field = add<QLineEdit>(u"field"_s);
        field->setText(u"old"_s);
        const QSignalSpy edits(field, &QLineEdit::textEdited);
        QStringList returned;
        connect(field, &QLineEdit::returnPressed, this, [&] { returned.append(field->text()); });
        QCOMPARE(does({u"enter field Été à 3"_s}), QString());
        QCOMPARE(returned, QStringList{u"Été à 3"_s});
        QCOMPARE(edits.size(), 2); // emptied, and filled
    }

    void aDoubleClickIsOne()
    {
        auto *list = add<QListWidget>(u"list"_s);
        list->addItem(u"item"_s);
        const QSignalSpy doubles(list, &QListWidget::itemDoubleClicked);
        QCOMPARE(does({u"doubleclick list item"_s}), QString());
        QCOMPARE(doubles.size(), 1);
    }

    void anEntryOfAContextMenuIsChosenWhileTheMenuIsOpen()
    {
        auto *list = add<QListWidget>(u"list"_s);
        list->addItem(u"item"_s);
        list->setContextMenuPolicy(Qt::CustomContextMenu);
        QString chosen;
        connect(list, &QWidget::customContextMenuRequested, this, [&](QPoint at) {
            QMenu menu;
            menu.addAction(u"First"_s);
            menu.addAction(u"Seco&nd"_s);
            const QAction *action = menu.exec(list->viewport()->mapToGlobal(at));
            chosen = action ? action->text() : u"none"_s;
        });
        QCOMPARE(does({u"rightclick list item"_s, u"press Second"_s}), QString());
        QTRY_COMPARE(chosen, u"Seco&nd"_s);
    }

    void aDialogIsAnsweredAndHidesWhatLiesBelow()
    {
        auto *ask = add<QPushButton>(u"ask"_s);
        QString answer;
        connect(ask, &QPushButton::clicked, this,
                [&] { answer = QInputDialog::getText(m_window.get(), u"Title"_s, u"Label"_s); });
        QStringList problems;
        connect(&m_hand, &Hand::done, ask, [&](const QString &problem) { problems.append(problem); });
        QCOMPARE(does({u"click ask"_s, u"click ask"_s, u"type QLineEdit a name"_s, u"press OK"_s}),
                 QString());
        QCOMPARE(problems,
                 QStringList({{},
                              u"there is no widget \"ask\" in reach, behind QInputDialog \"Title\": "
                              "Label | "_s,
                              {},
                              {}}));
        QTRY_COMPARE(answer, u"a name"_s);
    }

    void aFileIsNamedInADialog()
    {
        QFile file(temporaryHome() + u"/picture.png"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        auto *ask = add<QPushButton>(u"ask"_s);
        QString answer;
        connect(ask, &QPushButton::clicked, this, [&] {
            answer = QFileDialog::getOpenFileName(m_window.get(), u"Open"_s, {}, u"Images (*.png)"_s, nullptr,
                                                  QFileDialog::DontUseNativeDialog);
        });
        QCOMPARE(does({u"click ask"_s, u"enter fileNameEdit "_s + file.fileName()}), QString());
        QTRY_COMPARE(answer, file.fileName());
    }

    void itWaitsForWhatIsToCome()
    {
        auto *button = add<QPushButton>(u"late"_s);
        button->hide();
        const QSignalSpy clicks(button, &QPushButton::clicked);
        const QSignalSpy answers(&m_hand, &Hand::done);
        m_hand.perform(u"click late"_s);
        QTimer::singleShot(200, button, &QWidget::show);
        QTRY_COMPARE(answers.size(), 1);
        QCOMPARE(answers.constFirst().constFirst().toString(), QString());
        QCOMPARE(clicks.size(), 1);
    }

    void whatCannotBeDoneIsTold_data()
    {
        QTest::addColumn<QString>("gesture");
        QTest::addColumn<QString>("problem");
        QTest::newRow("no widget") << u"click nothing"_s << u"there is no widget \"nothing\" in reach"_s;
        QTest::newRow("no item") << u"click list nothing"_s << u"\"list\" has no item \"nothing\""_s;
        QTest::newRow("no entry") << u"click combo nothing"_s << u"\"combo\" has no entry \"nothing\""_s;
        QTest::newRow("no button") << u"press nothing"_s
                                   << u"there is no button or menu entry \"nothing\" in reach"_s;
        QTest::newRow("no gesture") << u"caress list"_s << u"there is no gesture \"caress\""_s;
        QTest::newRow("no picture") << u"picture /nowhere/x.png"_s << u"no picture was made"_s;
    }
    void whatCannotBeDoneIsTold()
    {
        QFETCH(const QString, gesture);
        add<QListWidget>(u"list"_s);
        add<QComboBox>(u"combo"_s);
        QTEST(does({gesture}), "problem");
    }

    void thePictureIsOfTheWindowOnTop()
    {
        const QString path = temporaryHome() + u"/window.png"_s;
        QCOMPARE(does({u"picture "_s + path}), QString());
        QCOMPARE(QImage(path).size(), m_window->size());
    }
};

GAMEPAD_TEST_MAIN(TestHand)
#include "tst_hand.moc"
