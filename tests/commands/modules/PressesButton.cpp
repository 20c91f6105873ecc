#include "platform/CDialog.h"
#include "platform/Desktop.h"
#include "platform/Windows1252.h"

#include <cstdlib>
#include <iostream>

namespace {

// Stands in for fendra-window.so, and for the person in front of it: chooses blocks in the settings
// dialog and presses the button of the id in BUTTON.
class ButtonPresser : public Desktop {
public:
    int messageBox(const CString& /*text*/, const CString& caption, unsigned /*style*/) override {
        std::cout << "message of " << toUtf8(caption) << '\n';
        return IDOK;
    }
    void runDialog(CDialog& dialog) override {
        constexpr unsigned radioPerBlock = 1040;
        dialog.click(radioPerBlock);
        if (const char* const button = std::getenv("BUTTON")) {
            dialog.click(static_cast<unsigned>(std::atoi(button)));
        }
    }
};

}  // namespace

extern "C" Desktop* makeWindowDesktop(const char* /*subject*/) {
    return new ButtonPresser;
}
