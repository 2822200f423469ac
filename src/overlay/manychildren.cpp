// SPDX-License-Identifier: MIT
#include "manychildren.h"

#include <QtWidgets/QWidget>

ManyChildren::ManyChildren(QWidget *parent)
    : m_parent(parent)
    , m_ignoredMouse(parent->testAttribute(Qt::WA_TransparentForMouseEvents))
{
    // For each child that is shown, Qt looks for the one that is under the mouse now.
    parent->setAttribute(Qt::WA_TransparentForMouseEvents);
    // A child that comes and goes leaves its whole area to be painted anew. What is updated on such an area
    // needs no entry in Qt's list of updated widgets, each of which is compared with all its siblings.
    QWidget area(parent);
    area.setGeometry(parent->rect());
    area.show();
}

ManyChildren::~ManyChildren()
{
    m_parent->setAttribute(Qt::WA_TransparentForMouseEvents, m_ignoredMouse);
}
