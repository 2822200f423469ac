// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtClassHelperMacros>

class QWidget;

/// Stands around a change of many children of one widget. For each child that is shown or updated Qt goes
/// through all its siblings; this spares Qt that, so that ten thousand children take seconds, not minutes.
class ManyChildren
{
public:
    /// `parent` must outlive this.
    explicit ManyChildren(QWidget *parent);
    ~ManyChildren();
    Q_DISABLE_COPY_MOVE(ManyChildren)

private:
    QWidget *m_parent;
    bool m_ignoredMouse;
};
