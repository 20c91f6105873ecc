#pragma once

#include "platform/CString.h"

// Style of a message: one OK button and the exclamation icon.
constexpr unsigned exclamationWithOk = 0x30;

// A window of the framework: what owns a message.
class CWnd {
public:
    virtual ~CWnd() = default;

    // Modal message of the installed desktop; see Desktop::messageBox.
    int MessageBox(const CString& text, const CString& caption, unsigned style);
};

// The main window of the application; never null.
CWnd* AfxGetMainWnd();
