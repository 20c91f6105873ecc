#include "workbench/module/ModuleSettings.h"

#include "host/B_BasisModule.h"
#include "platform/CArchive.h"

#include <sstream>

void ModuleSettings::applyTo(B_BasisModule& module) const {
    std::stringstream graph;
    CArchive stored(graph, CArchive::store);
    stored << module.moduleVersion << std::int32_t{reportsNumbers() ? 3 : 1};
    stored << executionMode << method << direction << convergence << maxIterations << abortAtError
           << errorValue << abortAtMinError << scaling;
    CArchive loaded(graph, CArchive::load);
    module.Serialize(loaded);
}

ModuleSettings ModuleSettings::of(B_BasisModule& module) {
    std::stringstream graph;
    CArchive stored(graph, CArchive::store);
    module.Serialize(stored);
    CArchive loaded(graph, CArchive::load);
    CString version;
    std::int32_t outputs = 0;
    ModuleSettings found;
    loaded >> version >> outputs >> found.executionMode >> found.method >> found.direction >>
        found.convergence >> found.maxIterations >> found.abortAtError >> found.errorValue >>
        found.abortAtMinError >> found.scaling;
    return found;
}
