#pragma once

#include "host/LaunchHelp.h"
#include "platform/Desktop.h"
#include "workbench/window/Application.h"

#include <QPointer>
#include <QString>

class HelpWindow;

// Dialogs, messages and help in windows on the person's screen.
class WindowDesktop : public Desktop {
public:
    // Installs the launcher of the help until it ends.
    //   subjectOfDialogs   added to the title of each dialog; empty: nothing
    explicit WindowDesktop(QString subjectOfDialogs);
    WindowDesktop(const WindowDesktop&) = delete;
    WindowDesktop& operator=(const WindowDesktop&) = delete;
    ~WindowDesktop() override;

    int messageBox(const CString& text, const CString& caption, unsigned style) override;
    void runDialog(CDialog& dialog) override;

private:
    void showHelp();

    Application application;
    QString subject;
    HelpLauncher launcherBefore;
    QPointer<HelpWindow> help;  // ends with the window that it was asked for in
};
