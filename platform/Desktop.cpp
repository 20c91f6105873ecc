#include "platform/Desktop.h"

#include "platform/Windows1252.h"

#include <iostream>

namespace {

class StandardErrorDesktop : public Desktop {
public:
    int messageBox(const CString& text, const CString& caption, unsigned /*style*/) override {
        std::cerr << toUtf8(caption + ": " + text + "\n");
        return IDOK;
    }
};

}  // namespace

static Desktop* installedDesktop = nullptr;

Desktop* Desktop::install(Desktop* desktop) {
    Desktop* const before = installedDesktop;
    installedDesktop = desktop;
    return before;
}

Desktop& Desktop::current() {
    static StandardErrorDesktop standardError;
    return installedDesktop != nullptr ? *installedDesktop : standardError;
}
