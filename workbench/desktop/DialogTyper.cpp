#include "workbench/desktop/DialogTyper.h"

#include "platform/CDialog.h"
#include "platform/Windows1252.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

DialogTyper::DialogTyper(std::vector<Assignment> assignments)
    : values(std::move(assignments)), before(Desktop::current()) {
    std::sort(values.begin(), values.end(), [](const Assignment& a, const Assignment& b) {
        return a.setting < b.setting;  // both in the one table
    });
}

// What has to be chosen before the setting applies, as KEY=VALUE with blanks between.
static std::string missing(const CDialog& dialog, const Setting& given) {
    std::string all;
    for (const Setting* setting = &given; !setting->needs.empty();) {
        const Assignment need(setting->needs);
        const DialogControl* const control = dialog.control(need.control());
        if (control == nullptr || !control->checked) {
            all.insert(0, setting->needs + (all.empty() ? "" : " "));
        }
        setting = need.setting;
    }
    return all;
}

static std::string describe(const Assignment& given) {
    return given.setting->key + "=" + printable(given.value);
}

static bool perform(CDialog& dialog, const Assignment& given, const DialogControl& control) {
    const unsigned id = given.control();
    const std::size_t place = given.setting->placeOf(given.value);
    switch (control.resource->kind) {
        case ControlKind::radio:
            return dialog.click(id);
        case ControlKind::checkBox:
            return control.checked == (place == 1) || dialog.click(id);
        case ControlKind::dropDown:
            return dialog.select(id, static_cast<int>(place));
        default:
            return dialog.type(id, fromUtf8(given.value));
    }
}

// A radio that two settings share is there for the one whose needs are met.
static void give(CDialog& dialog, const Assignment& given) {
    const std::string first = missing(dialog, *given.setting);
    if (!first.empty()) {
        throw Failure(fmt::format("{} does not apply: choose {} first", describe(given), first));
    }
    const DialogControl* const control = dialog.control(given.control());
    if (control == nullptr || !control->enabled || !perform(dialog, given, *control)) {
        throw Failure(
            fmt::format("{} is not on offer in the dialog of this module", describe(given)));
    }
}

// The control at which the data exchange stopped, as KEY=VALUE.
static std::string failedValue(const CDialog& dialog) {
    const unsigned id = dialog.failedControl();
    for (const Setting& setting : Setting::all()) {
        if (setting.controls.front() == id) {
            return setting.key + "=" + printable(toUtf8(dialog.control(id)->text));
        }
    }
    return fmt::format("control {}", id);
}

void DialogTyper::runDialog(CDialog& dialog) {
    inDialog = true;
    for (const Assignment& given : values) {
        give(dialog, given);
    }
    dialog.click(IDOK);
    inDialog = false;
    if (!dialog.hasEnded()) {
        throw Failure(fmt::format("{}: {}", failedValue(dialog), complaint));
    }
}

int DialogTyper::messageBox(const CString& text, const CString& caption, unsigned style) {
    if (!inDialog) {
        return before.messageBox(text, caption, style);
    }
    complaint = printable(toUtf8(text));
    return IDOK;
}
