#pragma once

#include "platform/CString.h"

class CDialog;

// The one seam to a screen. The process installs a desktop before it opens a module; without one,
// messages go to standard error. Not guarded: install while no other thread shows anything.
class Desktop {
public:
    virtual ~Desktop() = default;

    // Shows a message and returns when it is answered, with the id of the button pressed.
    //   style   buttons and icon, as the framework numbers them: 0x30 is one OK button and the
    //           exclamation icon
    virtual int messageBox(const CString& text, const CString& caption, unsigned style) = 0;

    // Shows a dialog and hands it what a person does, until dialog.hasEnded(); returns earlier only
    // if nobody can answer. A message box may be shown meanwhile.
    virtual void runDialog(CDialog& dialog) = 0;

    // Makes desktop the installed one, null for none. The caller keeps it and outlives its use.
    // Returns the one before, null where there was none.
    static Desktop* install(Desktop* desktop);

    // The installed desktop; without one, a desktop that writes "caption: text" to standard error,
    // in UTF-8, answers message boxes with IDOK and leaves dialogs unanswered.
    static Desktop& current();
};
