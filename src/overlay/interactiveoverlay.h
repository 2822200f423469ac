// SPDX-License-Identifier: MIT
#pragma once

#include "configspreads.h"
#include "functionindex.h"
#include "overlaydocument.h"
#include "overlaylines.h"
#include "overlaynode.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QUuid>

struct Binding;

/// A gamepad's picture with a pastille for each input and a tool box beside each pastille. It keeps them in
/// place on the picture whatever the widget's size, has one of them at most listen and one be active, and
/// keeps the tool boxes of like-titled pastilles in step.
class InteractiveOverlay : public OverlayLines
{
    Q_OBJECT
    Q_PROPERTY(QJsonArray externalServices READ externalServices WRITE setExternalServices NOTIFY
                   externalServicesChanged)

public:
    enum Mode { Edit = 0, Normal = 1 };
    Q_ENUM(Mode)

    explicit InteractiveOverlay(QWidget *parent = nullptr);
    ~InteractiveOverlay() override;

    [[nodiscard]] Mode mode() const { return m_mode; }
    /// Whether pastilles and tool boxes can be moved and edited. Emits nothing.
    void setMode(Mode mode);

    [[nodiscard]] QJsonArray externalServices() const { return m_externalServices; }
    /// The catalogue of functions, objects with at least `name`. Tool boxes are given it anew when it is the
    /// same, too.
    void setExternalServices(const QJsonArray &services);
    /// Locked, a mapping adds nothing to the catalogue.
    void setServicesLocked(bool locked) { m_servicesLocked = locked; }

    /// Adds a pastille around `centre`, in pixels, with its tool box. Without a title it takes that of its
    /// function, or "Bouton %1". The result belongs to the overlay.
    TouchArea *addPastille(const QPoint &centre, const QString &title);
    /// Removes a pastille with its tool box; both live until the event loop runs. Ignores other pointers.
    void removePastille(TouchArea *area);

    /// The pastille that waits for an input, or null.
    [[nodiscard]] TouchArea *listeningPastille() const { return m_listeningArea; }
    /// Titles the listening pastille with an input key, which ends its listening. Its node keeps the input
    /// that it had: the title alone tells the mapping what was learned.
    void applyListenedInput(const QString &key);
    /// Binds every pastille of this title to `action`, without regard to case and to blanks around both.
    void applyActionToTitle(const QString &action, const QString &title);
    /// Opens the arguments of the first tool box; false where there is none.
    Q_INVOKABLE bool openFirstToolboxSettings();

    /// The overlay document, version 2.
    [[nodiscard]] QJsonObject toJson() const;
    [[nodiscard]] QByteArray toJsonBytes(bool indented) const;
    /// Replaces all nodes by those of a document, old ones by way of `deleteLater`. Set the picture and the
    /// scale mode first. False, and nothing changed, where it is no overlay document.
    bool fromJson(const QJsonObject &json);

    /// The mapping's `bridges`, one for each node that is bound.
    [[nodiscard]] QJsonObject exportBridges() const;
    /// Takes the catalogue (`ref`, unless locked) and the `bridges` of a mapping. With bridges, tool boxes
    /// that none of them names are unbound. True when at least one reached a pastille.
    bool applyMapping(const QJsonObject &mapping);

    /// Gives the property's catalogue, whatever the argument, to the tool boxes, and emits `dirty`.
    virtual void applyExternalServices(const QJsonArray &services);

Q_SIGNALS:
    /// A press on a pastille in mode `Normal`.
    void pastilleActivated(QUuid id, QString title);
    /// Something worth saving changed, or may have; also while a document is loaded.
    void dirty();
    void externalServicesChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    // Nodes and their places.
    [[nodiscard]] QRect picture() const;
    [[nodiscard]] qsizetype positionOf(const TouchArea *area) const;
    [[nodiscard]] qsizetype positionOf(const ActionToolBox *box) const;
    void connectNode(TouchArea *area, ActionToolBox *box);
    void retire(const OverlayNode &node);
    void relayout();
    static void placeArea(const OverlayNode &node, const QRect &pic);
    static void placeBox(const OverlayNode &node, const QRect &pic);
    void onPastilleMoved(TouchArea *area);
    void onToolBoxMoved(ActionToolBox *box);

    // The one that listens and the one that is active.
    void onStartListeningRequested(TouchArea *area);
    void onSetActiveRequested(TouchArea *area, bool on);
    void onPastilleStateChanged(TouchArea *area, TouchArea::State state);
    void setListeningArea(TouchArea *area);
    void setActiveArea(TouchArea *area);

    // Like-titled pastilles.
    void onToolBoxChanged(ActionToolBox *box);
    void spread(const QJsonObject &config, const QString &title, qsizetype from);
    [[nodiscard]] QList<qsizetype> likeTitled(const QString &title) const;
    void configure(const QList<qsizetype> &positions, const QJsonObject &config);
    void takeFunction(const OverlayNode &node, const ConfigSpreads &spreads);
    void applySpreads(const ConfigSpreads &spreads);

    // Documents.
    void clearNodes();
    TouchArea *addNode(const OverlayDocumentNode &stored, const QRect &pic);
    void bind(qsizetype at, const Binding &binding);
    void raiseInputCounter(const QString &key);

    // The menu's file commands.
    void loadCatalogue();
    void exportMapping();

    QJsonArray m_externalServices;
    Mode m_mode = Edit;
    QList<OverlayNode> m_nodes;
    QPointer<TouchArea> m_activeArea;
    QPointer<TouchArea> m_listeningArea;
    int m_nextTitleIndex = 1;
    int m_nextJoyIndex = 0;
    int m_nextButIndex = 0;
    QJsonArray m_servicesCache; ///< what the tool boxes were given last
    FunctionIndex m_functions;  ///< over `m_servicesCache`
    bool m_servicesLocked = false;
    bool m_propagating = false;
    ConfigSpreads *m_spreads = nullptr; ///< set while spreads are collected instead of applied
    QSize m_lastOverlaySize;            ///< at the last resize or load; only a debugger reads it
};
