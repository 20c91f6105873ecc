#pragma once

#include "platform/CDialog.h"
#include "platform/CString.h"

#include <cstdint>
#include <span>

// One run of a dialog's data exchange, between its controls and its values. It ends at the first
// control that fails, by an exception that CDialog::UpdateData turns into a message.
class CDataExchange {
public:
    struct Failure {
        unsigned control;  // id
        CString message;   // for the user
    };

    // saving: from the controls into the values. The controls are those of a running dialog.
    CDataExchange(std::span<DialogControl> dialogControls, bool saving)
        : m_bSaveAndValidate(saving), controls(dialogControls) {}

    // The control with that id and all after it, in tab order; empty if there is none. A failure
    // from here on is one of this control.
    std::span<DialogControl> PrepareCtrl(unsigned id);

    // Ends the exchange, with a message to the user about the control prepared last.
    [[noreturn]] void Fail(CString message) const;

    bool m_bSaveAndValidate;  // NOLINT(readability-identifier-naming): the framework's name

private:
    std::span<DialogControl> controls;
    unsigned prepared = 0;
};

// The exchange of one control with one value. If the control does not exist, the value stays.
// Disabled controls take part like the others.
// NOLINTBEGIN(readability-identifier-naming): the framework's names.

// Position of the checked radio, counted from the one with the id to the end of its group; -1: none
// is checked. Any other value checks none.
void DDX_Radio(CDataExchange* exchange, unsigned id, std::int32_t& position);

// 1: checked, 0: not. Any value except 0 checks.
void DDX_Check(CDataExchange* exchange, unsigned id, std::int32_t& checked);

// Position of the chosen entry; -1: none is chosen. Any other value chooses none.
void DDX_CBIndex(CDataExchange* exchange, unsigned id, std::int32_t& position);

// Text of an edit, read as a whole; blanks may stand around the number. Whole numbers consist of
// digits. Others have a decimal point, whatever the locale, digits and an exponent; infinity is
// refused. A value is written as a person would type it: 15 digits, less trailing zeros, and up to
// two more where it takes them to read back the same value.
void DDX_Text(CDataExchange* exchange, unsigned id, std::uint32_t& value);
void DDX_Text(CDataExchange* exchange, unsigned id, double& value);

// Fails where the value just saved is not in minimum .. maximum.
void DDV_MinMaxDouble(CDataExchange* exchange, double value, double minimum, double maximum);
// NOLINTEND(readability-identifier-naming)
