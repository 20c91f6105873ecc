#include "workbench/files/Format.h"
#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

// Devices and pipes often have no ending; they get what standard output gets.
static bool isPlainStream(const SourceName& name) {
    std::error_code ignored;
    const std::filesystem::path path = pathOf(name.path);
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    return name.isStandardStream() ||
           (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
            !std::filesystem::is_directory(status) && path.extension().empty());
}

static const Format& formatFor(const SourceName& name) {
    const std::string ending = isPlainStream(name) ? ".csv" : lowerCaseEnding(name.path);
    for (const Format* format : Format::all()) {
        const auto& endings = format->endings;
        if (std::find(endings.begin(), endings.end(), ending) != endings.end()) {
            return *format;
        }
    }
    throw Failure(fmt::format("{}: the ending of the name does not give the format; use one of {}",
                              name.shown, Format::allEndings()));
}

bool holdsColumns(const SourceName& target) {
    return formatFor(target).columns;
}

bool holdsDoubles(const SignalTarget& target) {
    const Format& format = formatFor(target.name);
    return target.encoding == Encoding::float64 ||
           (target.encoding == Encoding::automatic && !format.integersAlone);
}

std::unique_ptr<SignalWriter> createSignal(const SignalTarget& target, const ResultInfo& info) {
    return formatFor(target.name).create(target, info);
}
