// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QUuid>
#include <QtWidgets/QWidget>

/// A pastille: the round or oval marker of one input on a gamepad's picture. It is moved, resized and has a
/// menu in edit mode, and reports a press otherwise. What concerns other pastilles it only asks for.
class TouchArea : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(State state READ state WRITE setState NOTIFY stateChanged)
    Q_PROPERTY(bool freeAspect READ freeAspect WRITE setFreeAspect NOTIFY freeAspectChanged)

public:
    enum State : int { Normal = 0, Listening = 1, Active = 2 };
    Q_ENUM(State)

    /// 56 by 56 pixels, titled "Bouton", in edit mode, with an identity of its own.
    explicit TouchArea(QWidget *parent = nullptr);

    [[nodiscard]] QUuid id() const { return m_id; }
    void setId(const QUuid &id) { m_id = id; }

    [[nodiscard]] QString title() const { return m_title; }
    /// Stores the text as it is. A pastille that listens becomes `Normal` and emits `listeningCompleted`,
    /// whatever the text.
    void setTitle(const QString &title);

    [[nodiscard]] State state() const { return m_state; }
    void setState(State state);
    /// `Active` or `Normal`; what listened listens no more.
    void setActive(bool on);
    void startListening();
    /// Back to `Normal`, only from `Listening`.
    void stopListening();

    [[nodiscard]] bool freeAspect() const { return m_freeAspect; }
    /// False is round: both sides become the longer one. True is oval and changes no size yet.
    void setFreeAspect(bool on);

    /// Whether the pastille can be moved, resized and has a menu. It ends no drag.
    void setEditMode(bool on);

Q_SIGNALS:
    /// A left press out of edit mode.
    void activated(QUuid id, QString title);
    void requestDelete(TouchArea *self);
    void requestStartListening(TouchArea *self);
    void requestSetActive(TouchArea *self, bool on);
    /// A step of a drag; the geometry may have stayed the same.
    void moved();
    void resized();
    void stateChanged(TouchArea::State newState, TouchArea::State oldState);
    void freeAspectChanged(bool freeAspect);
    void listeningCompleted(QString newTitle);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    [[nodiscard]] bool inResizeHandle(const QPoint &pos) const;
    void resizeBy(const QPoint &delta);
    void moveBy(const QPoint &delta);
    void clampToParent();
    void showRestingCursor();
    void rename();

    QUuid m_id = QUuid::createUuid();
    QString m_title;
    bool m_editMode = true;
    bool m_hovered = false;
    bool m_dragging = false;
    bool m_resizing = false;
    QPoint m_pressGlobalPos;
    QRect m_startGeometry;
    bool m_freeAspect = false;
    int m_minWidth = 28;
    int m_minHeight = 28;
    State m_state = Normal;
};
