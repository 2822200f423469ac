// SPDX-License-Identifier: MIT
#include "actionsheets.h"

using namespace Qt::StringLiterals;

namespace
{
struct ButtonColours
{
    QString border;
    QString text;
    QString hover;
    QString hoverText;
};

// All that a button needs: what stands above it may make its ground and its tool tip's transparent.
QString buttonSheet(const ButtonColours &colours)
{
    return uR"(
QToolButton {
    background: rgba(26, 42, 54, 230);
    color: %2;
    border: 1px solid %1;
    border-radius: 8px;
    padding: 6px 10px;
    font-weight: 600;
}
QToolButton:hover { background: %3; color: %4; }
QToolButton:pressed { background: #223847; }
QToolButton:focus { border-color: #5BBFD1; }
QToolButton#taskMiniBtn, QToolButton#taskMiniDangerBtn { padding: 0; }
QToolTip { background: #0E1B26; color: #E8F0F5; border: 1px solid #2A4456; }
)"_s.arg(colours.border, colours.text, colours.hover, colours.hoverText);
}
} // namespace

QString designerSheet()
{
    return uR"(
ActionDesignerWidget { background: #0E1B26; }
ActionDesignerWidget QLabel { background: transparent; color: #E8F0F5; }
#designerLeftPanel, #designerRightPanel {
    background: rgba(15, 26, 36, 210);
    border: 1px solid #2A4456;
    border-radius: 12px;
}
#sectionTitle { font-weight: 600; }
#designerRightPanel > #hintLabel { color: rgba(232, 240, 245, 170); }
#actionsList {
    background: rgba(12, 22, 31, 230);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 10px;
    padding: 4px;
    outline: none;
}
#actionsList:focus { border-color: #5BBFD1; }
#actionsList::item { padding: 6px 8px; border: 1px solid transparent; border-radius: 8px; }
#actionsList::item:hover { background: rgba(47, 79, 99, 160); }
#actionsList::item:selected { background: #244152; color: #E8F0F5; border: 1px solid #35617A; }
#actionNameEdit {
    background: rgba(12, 22, 31, 230);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 8px;
    padding: 5px 8px;
    min-height: 28px;
    selection-background-color: #2F4F63;
}
#actionNameEdit:hover { border-color: #3B5A72; }
#actionNameEdit:focus { border-color: #5BBFD1; }
#stepsScrollArea, #stepsPanel, #stepsScrollArea::corner { background: transparent; }
ActionDesignerWidget QScrollBar:vertical { background: transparent; width: 12px; }
ActionDesignerWidget QScrollBar:horizontal { background: transparent; height: 12px; }
ActionDesignerWidget QScrollBar::handle:vertical { background: #2F4F63; border-radius: 4px; min-height: 24px; margin: 4px 2px; }
ActionDesignerWidget QScrollBar::handle:horizontal { background: #2F4F63; border-radius: 4px; min-width: 24px; margin: 2px 4px; }
ActionDesignerWidget QScrollBar::add-line, ActionDesignerWidget QScrollBar::sub-line { width: 0; height: 0; }
)"_s;
}

QString stepsViewportSheet()
{
    return u"#stepsViewport { background: rgba(12, 22, 31, 220); border: 1px solid #2A4456; border-radius: 10px; }"_s;
}

QString primaryButtonSheet()
{
    return buttonSheet({u"#3E7F96"_s, u"#D7E4EC"_s, u"#2F5D70"_s, u"#D7E4EC"_s});
}

QString secondaryButtonSheet()
{
    return buttonSheet({u"#2A4456"_s, u"#D7E4EC"_s, u"#2F4F63"_s, u"#D7E4EC"_s});
}

QString dangerButtonSheet()
{
    return buttonSheet({u"#7C2A2A"_s, u"#F3C9C9"_s, u"#5B2323"_s, u"#FFE7E7"_s});
}
