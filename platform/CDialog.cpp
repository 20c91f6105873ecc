#include "platform/CDialog.h"

#include "platform/CDataExchange.h"
#include "platform/Desktop.h"
#include "platform/ResourceChain.h"
#include "platform/Windows1252.h"

#include <algorithm>
#include <string>

// The framework's own text, like those of CDataExchange. %1 stands for the choices.
static constexpr unsigned messageDisabled = 61715;
static constexpr StringResource messages[] = {
    {messageDisabled, languageGerman,
     " Das Feld ist gesperrt; wählen Sie zuerst: %1. Danach können Sie es ändern."},
    {messageDisabled, languageEnglish,
     " The field is disabled; choose first: %1. Then you can change it."},
    {messageDisabled, languageFrench,
     " Le champ est désactivé ; choisissez d'abord : %1. Vous pourrez ensuite le modifier."},
};
static const ResourceLibrary library(messages, {}, {}, {});

static std::vector<DialogControl> makeControls(const DialogResource& resource) {
    std::vector<DialogControl> controls;
    for (const ControlResource& control : resource.controls) {
        controls.push_back({.resource = &control, .text = fromUtf8(control.text), .entries = {}});
        for (const ListEntryResource& entry : resource.listEntries) {
            if (control.id != 0 && entry.controlId == control.id) {
                controls.back().entries.push_back(fromUtf8(entry.text));
            }
        }
    }
    return controls;
}

int CDialog::DoModal() {
    dialogResource = ResourceChain::dialog(resourceId);
    if (dialogResource == nullptr) {
        return -1;
    }
    states = makeControls(*dialogResource);
    ended = false;
    endCode = -1;
    failed = 0;
    OnInitDialog();
    Desktop::current().runDialog(*this);
    return endCode;
}

DialogControl* CDialog::find(unsigned id) {
    const auto found = std::find_if(states.begin(), states.end(), [id](const DialogControl& state) {
        return id != 0 && state.resource->id == id;
    });
    return found != states.end() ? &*found : nullptr;
}

const DialogControl* CDialog::control(unsigned id) const {
    return const_cast<CDialog*>(this)->find(id);  // NOLINT: find changes nothing itself
}

// The control if a person can do something with it now, else null.
DialogControl* CDialog::findUsable(unsigned id) {
    DialogControl* const control = find(id);
    return control != nullptr && control->enabled && !ended ? control : nullptr;
}

void CDialog::checkAlone(const DialogControl& radio) {
    const auto starts = [](const DialogControl& state) { return state.resource->startsGroup; };
    auto member = states.begin() + (&radio - states.data());
    const auto groupEnd = std::find_if(member + 1, states.end(), starts);
    while (member != states.begin() && !starts(*member)) {
        --member;
    }
    for (; member != groupEnd; ++member) {
        if (member->resource->kind == ControlKind::radio) {
            member->checked = &*member == &radio;
        }
    }
}

bool CDialog::click(unsigned id) {
    DialogControl* const control = findUsable(id);
    if (control == nullptr) {
        return false;
    }
    switch (control->resource->kind) {
        case ControlKind::radio:
            checkAlone(*control);
            break;
        case ControlKind::checkBox:
            control->checked = !control->checked;
            break;
        case ControlKind::defaultButton:
        case ControlKind::helpButton:
        case ControlKind::button:
            break;
        default:
            return false;
    }
    OnCommand(id);
    return true;
}

bool CDialog::type(unsigned id, const CString& text) {
    DialogControl* const control = findUsable(id);
    if (control == nullptr || control->resource->kind != ControlKind::edit) {
        return false;
    }
    control->text = text;
    OnCommand(id);
    return true;
}

bool CDialog::select(unsigned id, int position) {
    DialogControl* const control = findUsable(id);
    if (control == nullptr || position < 0 || position >= std::ssize(control->entries)) {
        return false;
    }
    control->selection = position;
    OnCommand(id);
    return true;
}

void CDialog::cancel() {
    if (!ended && (find(IDCANCEL) == nullptr || findUsable(IDCANCEL) != nullptr)) {
        OnCommand(IDCANCEL);
    }
}

void CDialog::OnInitDialog() {
    UpdateData(false);
}

void CDialog::DoDataExchange(CDataExchange* /*exchange*/) {}

void CDialog::OnCommand(unsigned id) {
    if (id == IDOK) {
        OnOK();
    } else if (id == IDCANCEL) {
        OnCancel();
    }
}

void CDialog::OnOK() {
    if (UpdateData(true)) {
        EndDialog(IDOK);
    }
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

std::vector<unsigned> CDialog::choicesFor(unsigned /*id*/) const {
    return {};
}

std::vector<unsigned> CDialog::missingChoices(unsigned id) const {
    std::vector<unsigned> missing;
    const DialogControl* const disabled = control(id);
    if (disabled != nullptr && !disabled->enabled) {
        missing = choicesFor(id);
        std::erase_if(missing, [this](unsigned choice) { return IsDlgButtonChecked(choice); });
    }
    return missing;
}

unsigned CDialog::focusAfterFailure() const {
    const std::vector<unsigned> missing = missingChoices(failed);
    return missing.empty() ? failed : missing.front();
}

// A label as a sentence quotes it: without mnemonic, in one line, without the colon at its end.
static std::string quoted(const CString& label) {
    std::string text(label);
    std::erase(text, '&');
    std::replace(text.begin(), text.end(), '\n', ' ');
    const auto bothBlank = [](char left, char right) { return left == ' ' && right == ' '; };
    text.erase(std::unique(text.begin(), text.end(), bothBlank), text.end());
    text.erase(text.find_last_not_of(" :") + 1);
    return '"' + text + '"';
}

// What to choose for the failed control to be enabled; empty if it is.
CString CDialog::reachability() const {
    std::string choices;
    for (const unsigned choice : missingChoices(failed)) {
        choices += (choices.empty() ? "" : ", ") + quoted(control(choice)->text);
    }
    if (choices.empty()) {
        return {};
    }
    std::string text(ResourceChain::string(messageDisabled));
    text.replace(text.find("%1"), 2, choices);
    return text.c_str();
}

bool CDialog::UpdateData(bool saving) {
    failed = 0;
    try {
        CDataExchange exchange(states, saving);
        DoDataExchange(&exchange);
        return true;
    } catch (const CDataExchange::Failure& failure) {
        failed = failure.control;
        MessageBox(failure.message + reachability(), fromUtf8(dialogResource->title),
                   exclamationWithOk);
        return false;
    }
}

void CDialog::EndDialog(int code) {
    ended = true;
    endCode = code;
}

void CDialog::EnableDlgItem(unsigned id, bool enable) {
    if (DialogControl* const control = find(id)) {
        control->enabled = enable;
    }
}

void CDialog::CheckDlgButton(unsigned id, bool check) {
    if (DialogControl* const control = find(id)) {
        control->checked = check;
    }
}

bool CDialog::IsDlgButtonChecked(unsigned id) const {
    const DialogControl* const state = control(id);
    return state != nullptr && state->checked;
}
