#include "workbench/module/FendraModule.h"

#include "host/B_BasisModule.h"
#include "platform/CArchive.h"

#include <sstream>

void applySettings(const FendraSettings& settings, B_BasisModule& module) {
    std::stringstream graph;
    CArchive stored(graph, CArchive::store);
    stored << module.moduleVersion << std::int32_t{settings.reportsNumbers() ? 3 : 1};
    stored << settings.executionMode << settings.method << settings.direction
           << settings.convergence << settings.maxIterations << settings.abortAtError
           << settings.errorValue << settings.abortAtMinError << settings.scaling;
    CArchive loaded(graph, CArchive::load);
    module.Serialize(loaded);
}

FendraSettings settingsOf(B_BasisModule& module) {
    std::stringstream graph;
    CArchive stored(graph, CArchive::store);
    module.Serialize(stored);
    CArchive loaded(graph, CArchive::load);
    CString version;
    std::int32_t outputs = 0;
    FendraSettings found;
    loaded >> version >> outputs >> found.executionMode >> found.method >> found.direction >>
        found.convergence >> found.maxIterations >> found.abortAtError >> found.errorValue >>
        found.abortAtMinError >> found.scaling;
    return found;
}
