#pragma once

#include "platform/CDialog.h"

#include <QDialog>

#include <exception>
#include <functional>
#include <vector>

class QScrollArea;

// A dialog of the framework in a window: draws its template, passes on what a person does, and
// after each action shows the state that the dialog has then.
class DialogWindow : public QDialog {
public:
    // The dialog outlives the window, which is as large as the template.
    //   subject   what the dialog is about, added to its title; empty: nothing
    DialogWindow(CDialog& shownDialog, const QString& subject, QWidget* parent);

    // Makes the window no larger than that, its frame included. Where the template is larger, the
    // window has scroll bars, and what has the focus is in view.
    void fitInto(const QSize& available);

    // Shows the window, modal, until the dialog ends. What its handlers throw leaves from here.
    void run();

    // Name of the field that the dialog's last data exchange failed at; empty if at none.
    [[nodiscard]] QString failedField() const;

    // Escape and the close box.
    void reject() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addContent();
    void addControls();
    void connectControl(const DialogControl& control, QWidget* widget);
    void linkControls();

    void perform(const std::function<void()>& action);
    void click(unsigned id);
    void refresh();
    void focusFirst();
    void focusFailed();
    [[nodiscard]] QWidget* widgetOf(unsigned id) const;

    CDialog& dialog;
    QScrollArea* view = nullptr;
    QWidget* content = nullptr;     // has the size of the template
    std::vector<QWidget*> widgets;  // of dialog.controls(), in the same order
    std::exception_ptr failure;     // what a handler threw
};
