#include "workbench/module/FendraModule.h"

#include "host/B_BasisModule.h"
#include "platform/CArchive.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleLibrary.h"

#include <fmt/format.h>

#include <sstream>

// The version of the record, which is older than that of the label.
static constexpr const char* fendraName = "Fendra";
static constexpr const char* recordVersion = "V1.91";

bool isFendra(const B_BasisModule& module) {
    return moduleName(module) == fendraName && moduleVersion(module) == recordVersion;
}

static void require(const std::string& name, const std::string& version) {
    if (name != fendraName || version != recordVersion) {
        throw Failure(
            fmt::format("{} {} is not {} {}, whose settings these are; choose another module with "
                        "--module",
                        name, version, fendraName, recordVersion));
    }
}

void requireFendra(const B_BasisModule& module) {
    require(moduleName(module), moduleVersion(module));
}

void requireFendra(const ModuleLibrary& library) {
    require(library.identity().name, library.identity().version);
}

void applySettings(const FendraSettings& settings, B_BasisModule& module) {
    requireFendra(module);
    const Method* const method = Method::selectedBy(settings);
    const std::int32_t outputs = method != nullptr && method->reportsNumbers() ? 3 : 1;
    std::stringstream graph;
    CArchive stored(graph, CArchive::store);
    stored << module.moduleVersion << outputs;
    stored << settings.executionMode << settings.method << settings.direction
           << settings.convergence << settings.maxIterations << settings.abortAtError
           << settings.errorValue << settings.abortAtMinError << settings.scaling;
    CArchive loaded(graph, CArchive::load);
    module.Serialize(loaded);
}

FendraSettings settingsOf(B_BasisModule& module) {
    requireFendra(module);
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
