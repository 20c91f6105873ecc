#pragma once

#include "platform/CString.h"

#include <functional>

// A failure reported to the host. Constructing one reports it; it is never thrown.
class TCError {
public:
    // Called with each error as it is constructed.
    using Reporter = std::function<void(const TCError& error)>;

    // Null texts are empty.
    TCError(const char* from, const char* message, int number);

    // Installs the process's reporter, an empty one for the default: the line "source: text (code)"
    // on standard error, in UTF-8. Returns the one before. Not guarded: install while no module
    // runs in another thread.
    static Reporter install(Reporter reporter);

    CString source;  // the module that reports
    CString text;
    int code;
};
