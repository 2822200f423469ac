// SPDX-License-Identifier: MIT
#include "actionsheets.h"

using namespace Qt::StringLiterals;

QString toolBoxSheet()
{
    return uR"(
ActionToolBox, QFrame#toolSettings {
    background: #1A2A36;
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 8px;
}
ActionToolBox > QLabel, QFrame#toolSettings QLabel {
    background: transparent;
    color: #E8F0F5;
}
ActionToolBox > QComboBox, QFrame#toolSettings QLineEdit {
    background: #0F1720;
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 6px;
    padding: 3px 8px;
    selection-background-color: #2F4F63;
}
ActionToolBox > QComboBox:hover, QFrame#toolSettings QLineEdit:hover { border-color: #3B5A72; }
ActionToolBox > QComboBox:focus, QFrame#toolSettings QLineEdit:focus { border-color: #5BBFD1; }
ActionToolBox > QComboBox { combobox-popup: 0; }
ActionToolBox > QComboBox::drop-down { border: none; width: 20px; }
ActionToolBox QAbstractItemView {
    background: #0F1720;
    color: #E8F0F5;
    border: 1px solid #3B5A72;
    selection-background-color: #2F4F63;
    selection-color: #E8F0F5;
    outline: none;
}
ActionToolBox QAbstractItemView::item { padding: 4px 6px; }
ActionToolBox QToolTip, QFrame#toolSettings QToolTip {
    background: #111827;
    color: #E8F0F5;
    border: 1px solid #2A4456;
}
ActionToolBox QToolButton, QFrame#toolSettings QToolButton {
    background: #243544;
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 6px;
}
ActionToolBox QToolButton:hover, QFrame#toolSettings QToolButton:hover { background: #2F4F63; }
QFrame#toolSettings QScrollArea, QFrame#toolSettings ArgumentForm { background: transparent; border: none; }
ActionToolBox QScrollBar, QFrame#toolSettings QScrollBar { background: transparent; width: 12px; }
ActionToolBox QScrollBar::handle, QFrame#toolSettings QScrollBar::handle { background: #2F4F63; border-radius: 4px; min-height: 24px; margin-left: 4px; }
ActionToolBox QScrollBar::add-line, ActionToolBox QScrollBar::sub-line,
QFrame#toolSettings QScrollBar::add-line, QFrame#toolSettings QScrollBar::sub-line { width: 0; height: 0; }
)"_s;
}

QString taskBlockSheet()
{
    return uR"(
#ActionTaskBlockWidget {
    background: qlineargradient(x1:0, y1:0, x2:1, y2:1,
                                stop:0 rgba(20, 33, 45, 235), stop:1 rgba(16, 26, 36, 240));
    border: 1px solid #2A4456;
    border-left: 6px solid #5BBFD1;
    border-radius: 12px;
}
#ActionTaskBlockWidget:hover { border-color: #3B5A72; border-left-color: #5BBFD1; }
#ActionTaskBlockWidget #blockLabel {
    background: rgba(18, 39, 54, 220);
    color: #E8F0F5;
    border-radius: 8px;
    padding: 2px 8px;
    font-weight: 600;
}
#ActionTaskBlockWidget #paramTag {
    background: rgba(23, 45, 63, 235);
    color: #DCE7EE;
    border: 1px solid #35617A;
    border-radius: 8px;
    padding: 2px 8px;
    margin: 7px 0;
    font-weight: 600;
}
#ActionTaskBlockWidget QComboBox, #ActionTaskBlockWidget QLineEdit {
    background: rgba(12, 22, 31, 230);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 8px;
    padding: 5px 8px;
    min-height: 28px;
    selection-background-color: #2F4F63;
}
#ActionTaskBlockWidget QComboBox:hover, #ActionTaskBlockWidget QLineEdit:hover { border-color: #3B5A72; }
#ActionTaskBlockWidget QComboBox:focus, #ActionTaskBlockWidget QLineEdit:focus { border-color: #5BBFD1; }
#ActionTaskBlockWidget QComboBox { combobox-popup: 0; }
#ActionTaskBlockWidget QComboBox::drop-down { border: none; width: 24px; }
#ActionTaskBlockWidget QAbstractItemView {
    background: #0C161F;
    color: #E8F0F5;
    border: 1px solid #3B5A72;
    selection-background-color: #2F4F63;
    selection-color: #E8F0F5;
    outline: none;
}
#ActionTaskBlockWidget QAbstractItemView::item { padding: 5px 6px; }
#ActionTaskBlockWidget QScrollArea, #ActionTaskBlockWidget ArgumentForm { background: transparent; border: none; }
#ActionTaskBlockWidget QScrollBar { background: transparent; width: 12px; }
#ActionTaskBlockWidget QScrollBar::handle { background: #2F4F63; border-radius: 4px; min-height: 24px; margin-left: 4px; }
#ActionTaskBlockWidget QScrollBar::add-line, #ActionTaskBlockWidget QScrollBar::sub-line { height: 0; }
)"_s;
}
