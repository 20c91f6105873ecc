#include "host/TCError.h"

#include "platform/Windows1252.h"

#include <iostream>
#include <utility>

static TCError::Reporter& installedReporter() {
    static TCError::Reporter reporter;
    return reporter;
}

TCError::TCError(const char* from, const char* message, int number)
    : source(from), text(message), code(number) {
    if (installedReporter()) {
        installedReporter()(*this);
        return;
    }
    CString ending;
    ending.Format(" (%d)\n", code);
    std::cerr << toUtf8(source + ": " + text + ending);
}

TCError::Reporter TCError::install(Reporter reporter) {
    return std::exchange(installedReporter(), std::move(reporter));
}
