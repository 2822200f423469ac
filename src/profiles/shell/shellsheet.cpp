// SPDX-License-Identifier: MIT
#include "shellsheet.h"

using namespace Qt::StringLiterals;

// The cells of the profiles' list are wider than the list, by a margin of their pictures that nobody has to
// scroll to.
QString shellSheet()
{
    return uR"(
#ManetteConfigurationWidget, QTabWidget { background: transparent; color: #E8F0F5; }
QFrame#vlxBackdrop {
    background: qradialgradient(cx: 0.5, cy: 0.0, radius: 1.2, fx: 0.5, fy: 0.0,
        stop: 0 rgba(110, 200, 215, 55), stop: 0.28 rgba(18, 30, 40, 220), stop: 1 rgba(9, 14, 18, 255));
    border: none;
    border-radius: 0px;
}

QTabWidget::pane {
    background: transparent;
    border: 1px solid rgba(110, 200, 215, 70);
    border-radius: 16px;
    margin-top: 6px;
}
QTabWidget::tab-bar { left: 12px; }
QTabBar { background: transparent; }
QTabBar::tab {
    background: rgba(26, 42, 54, 200);
    color: #8FA7B6;
    border: 1px solid #2A4456;
    border-top-left-radius: 12px;
    border-top-right-radius: 12px;
    padding: 8px 16px;
    margin-right: 6px;
}
QTabBar::tab:hover { background: #243544; color: #E8F0F5; }
QTabBar::tab:selected {
    background: qlineargradient(x1: 0, y1: 0, x2: 1, y2: 1, stop: 0 #10202B, stop: 0.5 #0C1821, stop: 1 #091218);
    color: #E8F0F5;
    border: 1px solid rgba(110, 200, 215, 80);
}

QListWidget {
    background: rgba(26, 42, 54, 200);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 14px;
    outline: none;
}
QListWidget::item { border-radius: 8px; padding: 4px; }
QListWidget::item:hover { background: #243544; }
QListWidget::item:selected { background: #2F4F63; color: #E8F0F5; }

QComboBox {
    background: rgba(26, 42, 54, 200);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 10px;
    padding: 5px 10px;
    combobox-popup: 0;
}
QComboBox:hover { background: #243544; }
QComboBox::drop-down { border: none; width: 22px; }
QComboBox QAbstractItemView {
    background: #1A2A36;
    color: #E8F0F5;
    border: 1px solid #2A4456;
    selection-background-color: #2F4F63;
    selection-color: #E8F0F5;
    outline: none;
}

QPushButton {
    background: rgba(26, 42, 54, 200);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 8px;
    padding: 6px 12px;
}
QPushButton:hover { background: #243544; }
QPushButton:pressed { background: #1D2B36; }
QPushButton:disabled { color: #8FA7B6; }

QMenu {
    background: #1A2A36;
    color: #E8F0F5;
    border: 1px solid #2A4456;
    padding: 4px;
}
QMenu::item { padding: 5px 24px 5px 12px; border-radius: 8px; }
QMenu::item:selected { background: #2F4F63; }
QMenu::item:disabled { color: #8FA7B6; background: transparent; }
QMenu::separator { background: #2A4456; height: 1px; margin: 4px 8px; }

QMessageBox, QInputDialog { background: #1A2A36; color: #E8F0F5; }
QMessageBox QLabel, QInputDialog QLabel, QMessageBox QCheckBox { background: transparent; color: #E8F0F5; }
QMessageBox QCheckBox::indicator {
    background: #10202B;
    border: 1px solid #8FA7B6;
    border-radius: 3px;
    width: 13px;
    height: 13px;
}
QMessageBox QCheckBox::indicator:checked { background: #5BBFD1; }
QInputDialog QLineEdit {
    background: #10202B;
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 8px;
    padding: 5px 8px;
    selection-background-color: #2F4F63;
}

QScrollBar:vertical { background: transparent; width: 10px; margin: 0px; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 0px; }
QScrollBar::handle { background: #2A4456; border: none; border-radius: 4px; margin: 1px; }
QScrollBar::handle:vertical { min-height: 24px; }
QScrollBar::handle:horizontal { min-width: 24px; }
QScrollBar::handle:hover { background: #2F4F63; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QListWidget#listWidget QScrollBar:horizontal { height: 0px; }
)"_s;
}
