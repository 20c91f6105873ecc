#include "workbench/batch/resultFault.h"

#include "workbench/batch/fileDigest.h"
#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <memory>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

void noteState(const fs::path& file, BatchLine::Result& result) {
    std::error_code ignored;
    result.bytes = static_cast<std::int64_t>(fs::file_size(file, ignored));
    result.modified =
        static_cast<std::int64_t>(fs::last_write_time(file, ignored).time_since_epoch().count());
}

bool isUntouched(const fs::path& folder, const BatchLine& line) {
    BatchLine::Result now;
    noteState(folder / pathOf(line.name), now);
    return line.result && line.result->bytes == now.bytes && line.result->modified == now.modified;
}

// Empty if it has other columns. The axis of a text stands before the columns of samples, and is
// read as another of them.
static std::string digestOfSamples(const std::string& file, int columns) {
    const std::unique_ptr<SignalReader> reader =
        openSignal(SourceName(file), {.allowNonfinite = true, .axis = "none", .columns = {}});
    const auto width = static_cast<std::size_t>(reader->info().channels);
    const auto taken = static_cast<std::size_t>(columns);
    if (taken == 0 || width < taken || width > taken + 1) {
        return "";
    }
    constexpr std::size_t piece = 4096;
    std::vector<double> rows(width * piece), samples;
    SampleDigest digest;
    while (const std::int64_t got = reader->read(rows.data(), std::int64_t{piece})) {
        samples.clear();
        for (std::size_t i = 0; i < static_cast<std::size_t>(got); ++i) {
            const double* const end = rows.data() + (i + 1) * width;
            samples.insert(samples.end(), end - taken, end);
        }
        digest.add(samples.data(), samples.size());
    }
    return digest.hex();
}

std::string resultFault(const fs::path& folder, const BatchLine& line) {
    if (!line.error.empty() || !line.result) {
        return "failed: " + line.error;
    }
    const fs::path path = folder / pathOf(line.name);
    std::error_code ignored;
    if (!fs::exists(path, ignored)) {
        return "is missing";
    }
    const std::string file = nameOf(path.generic_u8string());
    const BatchLine::Result& result = *line.result;
    try {
        const bool right = result.stored.empty()
                               ? digestOfSamples(file, result.columns) == result.sha256
                               : fileDigest(file) == result.stored;
        return right ? "" : "was changed: its samples are not those of the manifest";
    } catch (const Failure& failure) {
        return fmt::format("cannot be read: {}", failure.what());
    }
}
