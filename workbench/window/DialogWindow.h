#pragma once

#include "platform/CDialog.h"

#include <QDialog>

#include <exception>
#include <functional>
#include <vector>

// A dialog of the framework in a window: draws its template, hands it what a person does, and after
// each action shows the state that it has then.
class DialogWindow : public QDialog {
public:
    // The dialog outlives the window.
    DialogWindow(CDialog& shownDialog, QWidget* parent);

    // Shows the window, modal, until the dialog ends. What its handlers throw leaves from here.
    void run();

    // Name of the field that the dialog's last data exchange failed at; empty if at none.
    [[nodiscard]] QString failedField() const;

    // Escape and the close box.
    void reject() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addControls();
    void connectControl(const DialogControl& control, QWidget* widget);
    void linkControls();

    void perform(const std::function<void()>& action);
    void click(unsigned id);
    void refresh();
    void focusFirst();
    void focusFailed();
    [[nodiscard]] QWidget* failedWidget() const;

    CDialog& dialog;
    std::vector<QWidget*> widgets;  // of dialog.controls(), in the same order
    std::exception_ptr failure;     // what a handler threw
};
