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

// The control by which a value is given: for a word with a radio button that one.
static unsigned controlOf(const Assignment& given) {
    const Setting::Word* const word = given.setting->find(given.value);
    return word != nullptr && word->control != 0 ? word->control : given.setting->control;
}

// What has to be chosen before the setting applies, as KEY=VALUE, the first one first.
static std::vector<Assignment> missing(const CDialog& dialog, const Setting& given) {
    std::vector<Assignment> all;
    for (const Setting* setting = &given; !setting->needs.empty();) {
        const Assignment need(setting->needs);
        const DialogControl* const control = dialog.control(controlOf(need));
        if (control == nullptr || !control->checked) {
            all.insert(all.begin(), need);
        }
        setting = need.setting;
    }
    return all;
}

static std::string describe(const Assignment& given) {
    return given.setting->key + "=" + printable(given.value);
}

static bool setChecked(CDialog& dialog, unsigned id, bool checked) {
    const DialogControl* const control = dialog.control(id);
    return control != nullptr && (control->checked == checked || dialog.click(id));
}

// A number that can be switched off has a check box beside its field.
static bool performSwitched(CDialog& dialog, const Assignment& given) {
    const Setting& setting = *given.setting;
    const bool on = setting.find(given.value) == nullptr;
    return setChecked(dialog, setting.enablingControl, on) &&
           (!on || dialog.type(setting.control, fromUtf8(given.value)));
}

static bool perform(CDialog& dialog, const Assignment& given) {
    const unsigned id = controlOf(given);
    const DialogControl* const control = dialog.control(id);
    if (control == nullptr) {
        return false;
    }
    if (given.setting->enabledBy != nullptr) {
        return performSwitched(dialog, given);
    }
    const Setting::Word* const word = given.setting->find(given.value);
    switch (control->resource->kind) {
        case ControlKind::radio:
            return dialog.click(id);
        case ControlKind::checkBox:
            return control->enabled && setChecked(dialog, id, word->held != 0);
        case ControlKind::dropDown:
            return dialog.select(id, word->held);
        default:
            return dialog.type(id, fromUtf8(given.value));
    }
}

static void performOrRefuse(CDialog& dialog, const Assignment& given) {
    if (!perform(dialog, given)) {
        throw Failure(
            fmt::format("{} is not on offer in the dialog of this module", describe(given)));
    }
}

// A radio that two settings share is there for the one whose needs are met.
static void give(CDialog& dialog, const Assignment& given) {
    const std::vector<Assignment> first = missing(dialog, *given.setting);
    if (first.empty()) {
        performOrRefuse(dialog, given);
        return;
    }
    std::string needs;
    for (const Assignment& need : first) {
        needs += describe(need) + " ";
    }
    throw Failure(fmt::format("{} does not apply: choose {}first", describe(given), needs));
}

// What plays no part is set while the method is chosen that it belongs to; the choices come last.
void DialogTyper::giveWhole(CDialog& dialog) const {
    for (const Assignment& given : values) {
        for (const Assignment& need : missing(dialog, *given.setting)) {
            performOrRefuse(dialog, need);
        }
        performOrRefuse(dialog, given);
    }
    for (const Assignment& given : values) {
        if (given.setting->control == 0) {
            performOrRefuse(dialog, given);
        }
    }
}

// The control at which the data exchange stopped, as KEY=VALUE.
static std::string failedValue(const CDialog& dialog) {
    const unsigned id = dialog.failedControl();
    for (const Setting& setting : Setting::all()) {
        if (setting.control == id) {
            return setting.key + "=" + printable(toUtf8(dialog.control(id)->text));
        }
    }
    return fmt::format("control {}", id);
}

void DialogTyper::runDialog(CDialog& dialog) {
    inDialog = true;
    const bool whole = values.size() + 1 == Setting::all().size();  // without domain or method
    if (whole) {
        giveWhole(dialog);
    } else {
        for (const Assignment& given : values) {
            give(dialog, given);
        }
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
