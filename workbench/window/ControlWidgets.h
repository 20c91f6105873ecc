#pragma once

#include "platform/CDialog.h"

class QWidget;

// The widget that shows a control: its kind, label and list entries. What changes while the dialog
// runs is put into it by showState.
QWidget* makeWidget(const DialogControl& control, QWidget* parent);

// Puts the state of the control into its widget, without emitting signals.
void showState(const DialogControl& control, QWidget& widget);

// Whether a person works with controls of that kind.
bool takesFocus(ControlKind kind);

// Names the widget for screen readers by the text of the control, in one line and without its
// mnemonic.
void nameAfter(const DialogControl& control, QWidget& widget);
