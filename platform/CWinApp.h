#pragma once

#include "platform/CString.h"

// The application object of a program or library: one global object, which lives as long as the
// library is loaded.
class CWinApp {
public:
    // A null name gives the empty one.
    explicit CWinApp(const char* name = nullptr) : m_pszAppName(name) {}
    virtual ~CWinApp() = default;

    // NOLINTBEGIN(readability-identifier-naming): the framework's names.
    CString m_pszAppName;
    CString m_pszHelpFilePath;  // first argument of LaunchHelp; empty until somebody sets it
    // NOLINTEND(readability-identifier-naming)
};
