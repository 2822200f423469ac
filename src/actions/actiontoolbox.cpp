// SPDX-License-Identifier: MIT
#include "actiontoolbox.h"

#include "actionsheets.h"
#include "argumentform.h"
#include "formscrollarea.h"
#include "functioncombobox.h"
#include "functionlistmodel.h"
#include "sharedsheet.h"

#include <QtCore/QJsonArray>
#include <QtCore/QSignalBlocker>
#include <QtGui/QBitmap>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
// In the sheet the font would cost more than all the rest: Qt resolves it anew for the hidden list of every
// combo. Handed down from the frame it costs next to nothing.
void wearToolFont(QWidget *widget)
{
    QFont font = widget->font();
    font.setPixelSize(12);
    widget->setFont(font);
}

// A window is filled before its style sheet paints it: outside the rounded border the filling would show.
void roundCorners(QWidget *window)
{
    // Painted, since a region from a polygon takes the corners at the right and the bottom less round.
    QBitmap mask(window->size());
    mask.clear();
    const QPen pen(Qt::color1);
    const QBrush brush(Qt::color1);
    QPainter painter(&mask);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawRoundedRect(mask.rect().adjusted(0, 0, -1, -1), 8, 8);
    painter.end();
    window->setMask(mask);
}
} // namespace

ActionToolBox::ActionToolBox(QWidget *parent)
    : QFrame(parent)
    , m_functions(new FunctionListModel(toolBoxTraits, this))
{
    wearSheet(this, toolBoxSheet());
    wearToolFont(this);
    m_headerLabel = new QLabel(u"Action"_s, this);
    m_functionCombo = new FunctionComboBox(m_functions, this);
    setCursor(Qt::OpenHandCursor);

    m_headerLabel->setTextFormat(Qt::PlainText);
    m_functionCombo->setMinimumWidth(200);
    m_functionCombo->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
    m_functionCombo->setCursor(Qt::ArrowCursor); // the frame's hand is for dragging

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setSpacing(6);
    layout->addWidget(m_headerLabel);
    layout->addWidget(m_functionCombo, 1);
    setFixedHeight(36);
    adjustSize();

    connect(m_functionCombo, &QComboBox::currentIndexChanged, this, &ActionToolBox::onFunctionChosen);
}

ActionToolBox::~ActionToolBox()
{
    if (!m_settingsPanel)
        return;
    m_settingsPanel->hide();
    m_settingsPanel->deleteLater();
}

void ActionToolBox::setEditable(bool editable)
{
    m_editable = editable;
    m_dragging = m_dragging && editable;
    setCursor(editable ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void ActionToolBox::setHeaderText(const QString &text)
{
    m_headerLabel->setText(text);
}

void ActionToolBox::setExternalServices(const QJsonArray &catalogue)
{
    const QVariant current = m_functionCombo->currentData();
    const bool wasNone = current.isValid() && current.toInt() < 0;
    const FunctionDef *chosen = currentFunction();
    const QString previous = chosen ? chosen->name : QString();

    ensureSettingsPanel();
    {
        const QSignalBlocker quiet(m_functionCombo);
        m_functions->setCatalogue(FunctionCatalogue::shared(catalogue, toolBoxTraits));
        int index = -1;
        if (!previous.isEmpty())
            index = indexOrUnknown(previous);
        else if (!wasNone)
            index = m_functions->catalogue().indexOfNone();
        m_functionCombo->selectFunction(index);
    }
    rebuildForm();
    applyInputDefault();
}

void ActionToolBox::setInputKind(int kind)
{
    m_inputKind = kind;
    applyInputDefault();
    Q_EMIT durty();
}

QJsonObject ActionToolBox::config() const
{
    const FunctionDef *function = currentFunction();
    if (!function)
        return {};
    return {
        {u"ref"_s, function->name},
        {u"action"_s, function->name},
        {u"args"_s, m_form ? m_form->args() : QJsonObject()},
    };
}

void ActionToolBox::applyConfig(const QJsonObject &config)
{
    const QString action = config.value("action"_L1).toString();
    const QString ref = config.value("ref"_L1).toString();
    const QString name = ref.isEmpty() ? action : ref;

    int index = m_functions->indexOf(name);
    if (index < 0 && !action.isEmpty())
        index = m_functions->indexOf(action);
    if (name.isEmpty() || (index < 0 && namesNoFunction(name))) {
        selectNothing();
        return;
    }
    if (index < 0)
        index = m_functions->appendUnknown(name);

    ensureSettingsPanel();
    m_functionCombo->selectFunction(index);
    rebuildForm();
    const QJsonObject args = config.value("args"_L1).toObject();
    if (args.isEmpty())
        applyInputDefault();
    else if (m_form)
        m_form->fill(args);
    Q_EMIT durty();
}

void ActionToolBox::openSettings()
{
    ensureSettingsPanel();
    // Worn no sooner than it is seen: most panels never are.
    if (m_settingsPanel->styleSheet().isEmpty())
        m_settingsPanel->setStyleSheet(toolBoxSheet());
    m_settingsPanel->move(m_functionCombo->mapToGlobal(m_functionCombo->rect().bottomLeft()));
    m_formScroll->updateGeometry(); // a scroll area does not pass on that its content wants another size
    m_settingsPanel->adjustSize();
    roundCorners(m_settingsPanel);
    m_settingsPanel->show();
    m_settingsPanel->raise();
    m_settingsPanel->activateWindow();
}

void ActionToolBox::mousePressEvent(QMouseEvent *event)
{
    if (!m_editable || event->button() != Qt::LeftButton) {
        QFrame::mousePressEvent(event);
        return;
    }
    m_dragging = true;
    m_pressPos = event->globalPosition().toPoint();
    m_startGeometry = geometry();
    setCursor(Qt::ClosedHandCursor);
    event->accept();
}

void ActionToolBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton) {
        QFrame::mouseReleaseEvent(event);
        return;
    }
    m_dragging = false;
    setCursor(Qt::OpenHandCursor);
    event->accept();
}

void ActionToolBox::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!m_editable || event->button() != Qt::LeftButton) {
        QFrame::mouseDoubleClickEvent(event);
        return;
    }
    m_dragging = false;
    setCursor(Qt::OpenHandCursor);
    openSettings();
    event->accept();
}

void ActionToolBox::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging) {
        QFrame::mouseMoveEvent(event);
        return;
    }
    setGeometry(m_startGeometry.translated(event->globalPosition().toPoint() - m_pressPos));
    Q_EMIT moved();
}

void ActionToolBox::onFunctionChosen()
{
    rebuildForm();
    applyInputDefault();
    Q_EMIT durty();
}

const FunctionDef *ActionToolBox::currentFunction() const
{
    return m_functions->functionAt(m_functionCombo->functionIndex());
}

int ActionToolBox::indexOrUnknown(const QString &name)
{
    const int index = m_functions->indexOf(name);
    return index >= 0 ? index : m_functions->appendUnknown(name);
}

void ActionToolBox::selectNothing()
{
    m_functionCombo->selectFunction(-1);
    if (m_form)
        m_form->clear();
    Q_EMIT durty();
}

void ActionToolBox::ensureSettingsPanel()
{
    if (m_settingsPanel)
        return;
    m_settingsPanel = new QFrame(nullptr, Qt::Popup);
    m_settingsPanel->setObjectName(u"toolSettings"_s);
    m_settingsPanel->setAttribute(Qt::WA_StyledBackground);
    m_settingsPanel->setAutoFillBackground(false);

    m_form = new ArgumentForm(toolBoxTraits);
    m_formScroll = new FormScrollArea;
    m_formScroll->setWidgetResizable(true);
    m_formScroll->setFrameShape(QFrame::NoFrame);
    m_formScroll->setWidget(m_form);

    auto *layout = new QVBoxLayout(m_settingsPanel);
    layout->setContentsMargins(12, 10, 12, 10);
    layout->setSpacing(8);
    layout->addWidget(m_formScroll, 1);
    wearToolFont(m_settingsPanel);

    connect(m_form, &ArgumentForm::edited, this, &ActionToolBox::durty);
}

void ActionToolBox::rebuildForm()
{
    if (!m_form)
        return;
    const FunctionDef *function = currentFunction();
    m_form->setParams(function ? function->params : QList<ParamDef>());
}

void ActionToolBox::applyInputDefault()
{
    if (m_form)
        m_form->fillFromInput(m_inputKind);
}
