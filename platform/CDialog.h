#pragma once

#include "platform/CString.h"
#include "platform/CWnd.h"
#include "platform/DialogResource.h"

#include <vector>

class CDataExchange;

// A control of a running dialog, as it stands. Texts are in Windows-1252.
struct DialogControl {
    const ControlResource* resource;
    CString text;  // of an edit what stands in it, else the label with its mnemonic
    bool enabled = true;
    bool checked = false;          // radio and checkBox
    std::vector<CString> entries;  // dropDown
    int selection = -1;            // dropDown: position of the chosen entry; -1: none
};

// A modal dialog on a template of the resource chain. It is a state machine without widgets: what
// is on the screen follows from controls(), and what a person does comes in by click, type and
// select, from the window that the desktop shows or from a test.
class CDialog : public CWnd {
public:
    // Where the dialog appears is the desktop's choice; the parent plays no part in it.
    explicit CDialog(unsigned templateId, CWnd* /*parent*/ = nullptr) : resourceId(templateId) {}
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;
    ~CDialog() override = default;

    // Fills the controls from the template in the user's language, calls OnInitDialog, and has the
    // desktop show the dialog until it ends. Memory that runs out leaves by std::bad_alloc, here
    // and below.
    //   returns   what EndDialog was given: IDOK, IDCANCEL.
    //             -1: no such template, or nobody there to answer.
    virtual int DoModal();

    // The template of the running dialog, and its controls in tab order.
    const DialogResource& resource() const { return *dialogResource; }
    const std::vector<DialogControl>& controls() const { return states; }
    // The control with that id; null if there is none. 0 is no id.
    const DialogControl* control(unsigned id) const;

    // What a person does. A control that is not there, is disabled or cannot do that is left alone,
    // as is all of a dialog that has ended, and the answer is false. Else the state changes, and
    // then OnCommand hears of it.
    bool click(unsigned id);                      // radio, checkBox, buttons
    bool type(unsigned id, const CString& text);  // edit: becomes the whole text
    bool select(unsigned id, int position);       // dropDown: one of its entries
    // Escape or the close box: as a click on IDCANCEL, which need not be there.
    void cancel();

    // Whether EndDialog was called, and with what.
    bool hasEnded() const { return ended; }
    int answer() const { return endCode; }

    // The control that is to have the focus: where the last data exchange failed; 0: none. It is
    // known by the time the message about it is shown.
    unsigned failedControl() const { return failed; }

protected:
    // Start of the dialog, with the controls as in the template. The base puts the values into
    // them.
    virtual void OnInitDialog();

    // Exchanges values and controls by the functions of CDataExchange.h, in the direction that
    // exchange has. The base has no values.
    virtual void DoDataExchange(CDataExchange* exchange);

    // A control was clicked, typed into or selected from. The base answers IDOK by OnOK and
    // IDCANCEL by OnCancel; an override calls it for what it does not know.
    virtual void OnCommand(unsigned id);

    virtual void OnOK();      // ends the dialog if the data exchange succeeds
    virtual void OnCancel();  // ends the dialog

    // Runs the data exchange: into the values if saving, else into the controls. false: it stopped
    // at failedControl, of which the user has been told; values before it have been taken.
    bool UpdateData(bool saving);

    void EndDialog(int code);

    // State of a control, by its id; nothing happens where there is none.
    void EnableDlgItem(unsigned id, bool enable);
    void CheckDlgButton(unsigned id, bool check);
    bool IsDlgButtonChecked(unsigned id) const;

private:
    DialogControl* find(unsigned id);
    DialogControl* findUsable(unsigned id);
    void checkAlone(const DialogControl& radio);

    unsigned resourceId;
    const DialogResource* dialogResource = nullptr;
    std::vector<DialogControl> states;
    bool ended = false;
    int endCode = -1;
    unsigned failed = 0;
};
