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
// is on the screen follows from controls(), and what a person does comes in through click, type and
// select, from the window that the desktop shows or from a test.
class CDialog : public CWnd {
public:
    // Where the dialog appears is the desktop's choice; the parent has no influence on it.
    explicit CDialog(unsigned templateId, CWnd* /*parent*/ = nullptr) : resourceId(templateId) {}
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;
    ~CDialog() override = default;

    // Fills the controls from the template in the user's language, calls OnInitDialog, and has the
    // desktop show the dialog until it ends. Memory that runs out leaves by std::bad_alloc, here
    // and below.
    //   returns   what EndDialog was given: IDOK, IDCANCEL.
    //             -1: no such template, or nobody to answer.
    virtual int DoModal();

    // The template of the running dialog, and its controls in tab order.
    const DialogResource& resource() const { return *dialogResource; }
    const std::vector<DialogControl>& controls() const { return states; }
    // The control with that id; null if there is none. 0 is no id.
    const DialogControl* control(unsigned id) const;

    // What a person does: changes the state of the control, and then calls OnCommand. Returns
    // false, and changes nothing, if the control does not exist, is disabled or does not support
    // the action, or if the dialog has ended.
    bool click(unsigned id);                      // radio, checkBox, buttons
    bool type(unsigned id, const CString& text);  // edit: becomes the whole text
    bool select(unsigned id, int position);       // dropDown: one of its entries
    // Escape or the close box: as a click on IDCANCEL, which need not be there.
    void cancel();

    // Whether EndDialog was called, and with what.
    bool hasEnded() const { return ended; }
    int answer() const { return endCode; }

    // The control at which the last data exchange failed; 0: none. It is set before the message
    // about it is shown.
    unsigned failedControl() const { return failed; }

    // Where the focus belongs after a failure: the failed control, or, if that is disabled, the
    // first choice that is missing for it. 0: nowhere.
    unsigned focusAfterFailure() const;

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

    // Radios and boxes that have to be checked, in this order, for the control to be enabled. The
    // data exchange takes disabled controls like the others, so one may fail at what nobody can
    // reach: the message then names these. The base names none.
    virtual std::vector<unsigned> choicesFor(unsigned id) const;

    virtual void OnOK();      // ends the dialog if the data exchange succeeds
    virtual void OnCancel();  // ends the dialog

    // Runs the data exchange: into the values if saving, else into the controls. false: it stopped
    // at failedControl, and the message has been shown; values before it have been taken.
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
    std::vector<unsigned> missingChoices(unsigned id) const;
    CString reachability() const;

    unsigned resourceId;
    const DialogResource* dialogResource = nullptr;
    std::vector<DialogControl> states;
    bool ended = false;
    int endCode = -1;
    unsigned failed = 0;
};
