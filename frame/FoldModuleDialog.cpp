#include "frame/FoldModule.h"
#include "frame/FoldSettingsDialog.h"

#include <utility>

// Whether outputs 1 and 2 are there for what the dialog offers. Under a direction that only a file
// can hold they are not, even if a method gives its numbers: choosing deconvolution connects them
// anew.
static bool offersNumbers(const FoldSettings& settings) {
    return settings.direction == FoldSettings::deconvolution && settings.givesScalars();
}

PORTTYPE FoldModule::setupDlgPorts(RET_PORT& changed) {
    FoldSettingsDialog dialog(helpKey, settings.executionMode, settings.method, settings.direction,
                              settings.maxIterations, settings.convergence, settings.abortAtError,
                              settings.errorValue, settings.abortAtMinError, settings.scaling,
                              nullptr);
    if (dialog.DoModal() != IDOK) {
        return noPort;
    }
    // The outputs need not be those of the settings: a load that broke off within the record has
    // left them behind, or only a file holds such a direction.
    const int outputs = dialog.settings.outputs();
    if (offersNumbers(settings) == offersNumbers(dialog.settings) && outputCount == outputs) {
        settings = dialog.settings;
        return noPort;
    }

    RET_PORT rebuilt = changed;
    rebuilt.flag = 1;
    rebuilt.ports.Add(1);
    rebuilt.ports.Add(2);
    PortTables& tables = *this;
    PortTables tablesBefore = tables;
    const FoldSettings settingsBefore = std::exchange(settings, dialog.settings);
    try {
        outputCount = outputs;
        InitInputAndOutput();
        initToken();
        ComputeValidationData();
    } catch (...) {
        settings = settingsBefore;
        std::swap(tables, tablesBefore);
        throw;
    }
    std::swap(changed, rebuilt);
    return outputPort;
}
