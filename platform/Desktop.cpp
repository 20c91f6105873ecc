#include "platform/Desktop.h"

#include "platform/CDialog.h"
#include "platform/Windows1252.h"

#include <iostream>

namespace {

class StandardErrorDesktop : public Desktop {
public:
    int messageBox(const CString& text, const CString& caption, unsigned /*style*/) override {
        std::cerr << toUtf8(caption + ": " + text + "\n");
        return IDOK;
    }
    void runDialog(CDialog& dialog) override {
        std::cerr << dialog.resource().title << ": no display to show the dialog on\n";
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
