#include "workbench/batch/checkBatch.h"

#include "workbench/batch/Manifest.h"
#include "workbench/batch/resultFault.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/inParallel.h"

#include <fmt/format.h>

#include <map>
#include <mutex>
#include <optional>
#include <vector>

BatchCheck checkBatch(
    const std::string& folder, int threads,
    const std::function<void(const std::string& name, const std::string& fault)>& tell) {
    const Manifest manifest(pathOf(folder));
    const std::vector<std::string> names = manifest.names();
    if (names.empty()) {
        throw Failure(fmt::format("{} has no manifest of a batch; name the folder that was --into",
                                  printable(folder)));
    }
    std::mutex mutex;
    std::map<std::string, std::string> faults;
    inParallel(threads, std::ssize(names), [&](std::int64_t i) {
        const std::string& name = names[static_cast<std::size_t>(i)];
        const std::optional<BatchLine> line = manifest.line(name);
        const std::string fault =
            line ? resultFault(pathOf(folder), *line) : "has lost its line of the manifest";
        if (!fault.empty()) {
            const std::lock_guard lock(mutex);
            faults[name] = fault;
        }
    });
    for (const auto& [name, fault] : faults) {
        tell(name, fault);
    }
    return {std::ssize(names), std::ssize(faults)};
}
