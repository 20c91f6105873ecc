#include "workbench/module/ModuleCall.h"

#include "host/B_BasisModule.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/ModuleDriver.h"
#include "workbench/module/ModuleLibrary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>

ModuleAnswer callModule(const ModuleLibrary& library, const FendraSettings& settings,
                        const std::vector<double>& first, const std::vector<double>& second) {
    const std::int64_t length = std::max(std::ssize(first), std::ssize(second));
    constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max();
    if (length > longest) {
        throw Failure(fmt::format("the run takes {} samples at once, and the module at most {}",
                                  length, longest));
    }
    const ModuleObject module = library.makeModule();
    applySettings(settings, *module);
    ModuleDriver driver(*module);
    driver.feed(0, first.data(), std::ssize(first), true);
    driver.feed(1, second.data(), std::ssize(second), true);
    driver.step();
    ModuleAnswer answer;
    answer.samples = driver.takeSignal(length);
    answer.numbers = driver.takeNumbers();
    answer.numberNames = driver.numberNames();
    return answer;
}
