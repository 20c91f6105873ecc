#include "frame/FoldSettingsDialog.h"

#include "frame/EntryPoints.h"
#include "host/LaunchHelp.h"
#include "platform/CDataExchange.h"
#include "resources/resources.h"

#include <utility>

FoldSettingsDialog::FoldSettingsDialog(CString helpPage, std::int32_t executionMode,
                                       std::int32_t method, std::int32_t direction,
                                       std::uint32_t maxIterations, double convergence,
                                       std::int32_t abortAtError, double errorValue,
                                       std::int32_t abortAtMinError, std::int32_t scaling,
                                       CWnd* parent)
    : CDialog(dialogSettings, parent),
      settings{.executionMode = executionMode,
               .direction = direction,
               .method = method,
               .maxIterations = maxIterations,
               .convergence = convergence,
               .abortAtError = abortAtError,
               .errorValue = errorValue,
               .abortAtMinError = abortAtMinError,
               .scaling = scaling},
      helpKey(std::move(helpPage)) {}

void FoldSettingsDialog::OnInitDialog() {
    CDialog::OnInitDialog();
    enableMethodsOf(settings.direction == FoldSettings::convolution);
}

// The order decides which of several wrong fields is reported.
void FoldSettingsDialog::DoDataExchange(CDataExchange* exchange) {
    DDX_Radio(exchange, radioTimeDomain, settings.method);
    DDX_Radio(exchange, radioConvolution, settings.direction);
    DDX_Text(exchange, editMaxIterations, settings.maxIterations);
    DDX_Text(exchange, editConvergence, settings.convergence);
    DDX_Text(exchange, editErrorValue, settings.errorValue);
    DDV_MinMaxDouble(exchange, settings.errorValue, 0.0, 1e308);
    DDX_Check(exchange, checkAbortAtError, settings.abortAtError);
    DDX_Check(exchange, checkAbortAtMinError, settings.abortAtMinError);
    DDX_CBIndex(exchange, listScaling, settings.scaling);
    DDX_Radio(exchange, radioPerBlock, settings.executionMode);
}

void FoldSettingsDialog::OnCommand(unsigned id) {
    switch (id) {
        case radioConvolution:
        case radioDeconvolution:
            enableMethodsOf(id == radioConvolution);
            break;
        case radioTimeDomain:
        case radioFrequencyDomain:
        case radioVanCittert:
        case radioPseudoInverse:
        case checkAbortAtError:
            enableParameters();
            break;
        case buttonHelp:
            LaunchHelp(theApp.m_pszHelpFilePath, helpKey);
            break;
        default:
            CDialog::OnCommand(id);
    }
}

std::vector<unsigned> FoldSettingsDialog::choicesFor(unsigned id) const {
    switch (id) {
        case editConvergence:
        case editMaxIterations:
            return {radioDeconvolution, radioVanCittert};
        case editErrorValue:
            return {radioDeconvolution, radioVanCittert, checkAbortAtError};
        default:
            return {};
    }
}

void FoldSettingsDialog::enableMethodsOf(bool convolution) {
    enableMethod(radioTimeDomain, convolution);
    enableMethod(radioVanCittert, !convolution);
    enableMethod(radioPseudoInverse, !convolution);
    enableParameters();
}

void FoldSettingsDialog::enableMethod(unsigned radio, bool enable) {
    EnableDlgItem(radio, enable);
    if (!enable && IsDlgButtonChecked(radio)) {
        CheckDlgButton(radio, false);
        CheckDlgButton(radioFrequencyDomain, true);
    }
}

void FoldSettingsDialog::enableParameters() {
    const bool iterates = IsDlgButtonChecked(radioVanCittert);
    for (const unsigned id :
         {editConvergence, editMaxIterations, checkAbortAtError, checkAbortAtMinError}) {
        EnableDlgItem(id, iterates);
    }
    EnableDlgItem(editErrorValue, iterates && IsDlgButtonChecked(checkAbortAtError));
    EnableDlgItem(listScaling, IsDlgButtonChecked(radioPseudoInverse));
}
