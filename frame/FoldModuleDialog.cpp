#include "frame/FoldModule.h"
#include "frame/FoldSettingsDialog.h"

#include <utility>

// Whether the settings that the dialog deals in ask for outputs 1 and 2. It knows the directions 0
// and 1 alone; under another one, which only a file can hold, it leaves the outputs as they are.
static bool hasNumberPorts(const FoldSettings& settings) {
    return settings.direction == 1 && settings.givesScalars();
}

PORTTYPE FoldModule::setupDlgPorts(RET_PORT& changed) {
    FoldSettingsDialog dialog(helpKey, settings.executionMode, settings.method, settings.direction,
                              settings.maxIterations, settings.convergence, settings.abortAtError,
                              settings.errorValue, settings.abortAtMinError, settings.scaling,
                              nullptr);
    if (dialog.DoModal() != IDOK) {
        return noPort;
    }
    const bool numbers = hasNumberPorts(dialog.settings);
    if (hasNumberPorts(settings) == numbers) {
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
        outputCount = numbers ? 3 : 1;
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
