#include "workbench/parts/Part.h"
#include "workbench/parts/edf/EdfFile.h"
#include "workbench/parts/edf/EdfReader.h"

#include <fmt/format.h>

static std::string version() {
    return fmt::format("{}.{:02}", edflib_version() / 100, edflib_version() % 100);
}

static std::vector<FilePart> parts(const std::string& path, const SourceName& source) {
    const EdfFile file(path, source);
    std::vector<FilePart> signals;
    signals.reserve(static_cast<std::size_t>(file.signals()));
    for (int i = 0; i < file.signals(); ++i) {
        const std::string unit = file.unit(i);
        signals.push_back(
            {file.name(i),
             fmt::format("{}, {}, {} Hz{}{}", file.typeName(), file.signal(i).smp_in_file,
                         file.rate(i), unit.empty() ? "" : ", ", unit),
             ""});
    }
    return signals;
}

static std::unique_ptr<SignalReader> open(const std::string& path, const SourceName& source,
                                          const ReadOptions& options) {
    return std::make_unique<EdfReader>(path, source, options);
}

extern const Part edfPart = {"libedf", version, parts, open, nullptr};
