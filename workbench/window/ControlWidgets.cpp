#include "workbench/window/ControlWidgets.h"

#include "platform/userLanguage.h"
#include "workbench/window/TitledFrame.h"
#include "workbench/window/text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QValidator>

static QWidget* makeLabel(const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

static QWidget* makeLine(QWidget* parent) {
    auto* const line = new QFrame(parent);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    line->setMinimumHeight(2);  // its dark half and its light half
    return line;
}

namespace {

// Turns a comma into a decimal point as it is typed or pasted: edits of the framework hold numbers.
class DecimalComma : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& text, int& /*cursor*/) const override {
        text.replace(',', '.');
        return Acceptable;
    }
};

}  // namespace

// A comma is the decimal sign of German and French. In English it may separate thousands, and is
// left for the data exchange to refuse.
static QWidget* makeEdit(QWidget* parent) {
    auto* const edit = new QLineEdit(parent);
    if (userLanguage() != languageEnglish) {
        edit->setValidator(new DecimalComma(edit));
    }
    return edit;
}

static QWidget* makeDropDown(const DialogControl& control, QWidget* parent) {
    auto* const list = new QComboBox(parent);
    for (const CString& entry : control.entries) {
        list->addItem(toQt(entry));
    }
    return list;
}

static QWidget* makeButton(const DialogControl& control, QWidget* parent) {
    auto* const button = new QPushButton(toQt(control.text), parent);
    button->setDefault(control.resource->kind == ControlKind::defaultButton);
    return button;
}

QWidget* makeWidget(const DialogControl& control, QWidget* parent) {
    switch (control.resource->kind) {
        case ControlKind::frame:
            return new TitledFrame(toQt(control.text), parent);
        case ControlKind::label:
            return makeLabel(toQt(control.text), parent);
        case ControlKind::line:
            return makeLine(parent);
        case ControlKind::radio:
            return new QRadioButton(toQt(control.text), parent);
        case ControlKind::checkBox:
            return new QCheckBox(toQt(control.text), parent);
        case ControlKind::edit:
            return makeEdit(parent);
        case ControlKind::dropDown:
            return makeDropDown(control, parent);
        case ControlKind::defaultButton:
        case ControlKind::helpButton:
        case ControlKind::button:
            return makeButton(control, parent);
    }
    return nullptr;
}

void showState(const DialogControl& control, QWidget& widget) {
    const QSignalBlocker quiet(widget);
    widget.setEnabled(control.enabled);
    switch (control.resource->kind) {
        case ControlKind::radio:
        case ControlKind::checkBox:
            static_cast<QAbstractButton&>(widget).setChecked(control.checked);
            break;
        case ControlKind::edit:
            // The same text set again would move the cursor.
            if (auto& edit = static_cast<QLineEdit&>(widget); edit.text() != toQt(control.text)) {
                edit.setText(toQt(control.text));
            }
            break;
        case ControlKind::dropDown:
            static_cast<QComboBox&>(widget).setCurrentIndex(control.selection);
            break;
        default:
            break;
    }
}

bool takesFocus(ControlKind kind) {
    return kind != ControlKind::frame && kind != ControlKind::label && kind != ControlKind::line;
}

void nameAfter(const DialogControl& control, QWidget& widget) {
    const QString name = toQt(control.text).remove('&').simplified();
    widget.setAccessibleName(QString(name).remove(QRegularExpression("[ :]+$")));
}
