#pragma once

#include "platform/Desktop.h"
#include "workbench/methods/Setting.h"

#include <string>
#include <vector>

// Stands in for the person in front of a module's settings dialog: gives it values, each by its
// control, and clicks OK. So the dialog's own rules decide what may be set when, and to what.
class DialogTyper : public Desktop {
public:
    // Values are given in the order of Setting::all, whatever theirs. A value that plays no part
    // is refused; but a whole record, with a value for every setting of its direction, is taken
    // whole.
    explicit DialogTyper(std::vector<Assignment> assignments);

    // Failure, with the dialog not answered, if a value does not apply or the dialog does not take
    // it.
    void runDialog(CDialog& dialog) override;

    // The dialog's message on a value that it does not take, for the Failure. Without a dialog the
    // message goes to the desktop that was installed when this one was made.
    int messageBox(const CString& text, const CString& caption, unsigned style) override;

private:
    void giveWhole(CDialog& dialog) const;

    std::vector<Assignment> values;
    Desktop& before;
    bool inDialog = false;
    std::string complaint;
};
