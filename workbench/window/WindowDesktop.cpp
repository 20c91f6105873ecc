#include "workbench/window/WindowDesktop.h"

#include "platform/DialogResource.h"
#include "workbench/window/DialogWindow.h"
#include "workbench/window/HelpWindow.h"
#include "workbench/window/text.h"

#include <QMessageBox>
#include <QScreen>

#include <utility>

// There is one page, whatever file and key a module names.
WindowDesktop::WindowDesktop(QString subjectOfDialogs)
    : subject(std::move(subjectOfDialogs)),
      launcherBefore(installHelpLauncher(
          [this](const CString& /*helpFile*/, const CString& /*key*/) { showHelp(); })) {}

WindowDesktop::~WindowDesktop() {
    installHelpLauncher(std::move(launcherBefore));
}

// A message about a field begins with the field's name: it may be one that the person has left.
int WindowDesktop::messageBox(const CString& text, const CString& caption, unsigned style) {
    constexpr unsigned iconMask = 0xF0, exclamation = 0x30;
    QWidget* const above = QApplication::activeModalWidget();
    const auto* const dialog = dynamic_cast<DialogWindow*>(above);
    const QString field = dialog != nullptr ? dialog->failedField() : "";

    QMessageBox box((style & iconMask) == exclamation ? QMessageBox::Warning : QMessageBox::NoIcon,
                    toQt(caption), field.isEmpty() ? toQt(text) : field, QMessageBox::Ok, above);
    box.setTextFormat(Qt::PlainText);
    if (!field.isEmpty()) {
        box.setInformativeText(toQt(text));
    }
    box.exec();
    return IDOK;
}

void WindowDesktop::runDialog(CDialog& dialog) {
    DialogWindow window(dialog, subject, QApplication::activeModalWidget());
    window.fitInto(window.screen()->availableSize());
    window.run();
}

// Beside a modal dialog only what descends from it can be used, so the help does.
void WindowDesktop::showHelp() {
    if (help == nullptr) {
        help = new HelpWindow(QApplication::activeModalWidget());
    }
    help->show();
    help->raise();
    help->activateWindow();
}
