#include "workbench/desktop/SettingsEditor.h"

#include "host/B_BasisModule.h"
#include "platform/CDialog.h"

namespace {

// Installed while it lives, in place of the desktop before. Everything is shown by another one;
// this one notes whether a dialog came up, and whether it was answered by OK.
class Watch : public Desktop {
public:
    explicit Watch(Desktop& shownOn) : shown(shownOn), before(install(this)) {}
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() override { install(before); }

    int messageBox(const CString& text, const CString& caption, unsigned style) override {
        return shown.messageBox(text, caption, style);
    }
    void runDialog(CDialog& dialog) override {
        end = DialogEnd::dismissed;
        shown.runDialog(dialog);
        if (dialog.hasEnded() && dialog.answer() == IDOK) {
            end = DialogEnd::accepted;
        }
    }

    DialogEnd end = DialogEnd::notShown;

private:
    Desktop& shown;
    Desktop* before;
};

}  // namespace

DialogEnd editSettings(B_BasisModule& module, Desktop& desktop) {
    Watch watch(desktop);
    RET_PORT changed;
    module.OnLeftDblClk(changed);
    return watch.end;
}
