#include "workbench/messages/Printable.h"
#include "workbench/parts/Part.h"
#include "workbench/parts/mseed/MseedChannel.h"
#include "workbench/parts/mseed/MseedReader.h"

#include <fmt/format.h>

static std::string version() {
    return LIBMSEED_VERSION;
}

static std::vector<FilePart> parts(const std::string& path, const SourceName& source) {
    MseedRecords records(path, source.shown);
    std::vector<FilePart> signals;
    for (const auto& [name, channel] : channelsOf(records)) {
        FilePart part{name,
                      fmt::format("{}, {}, {} Hz{}", channel.encoding, channel.samples,
                                  channel.rate, channel.fault.empty() ? "" : ", not continuous"),
                      ""};
        if (!channel.refusal.empty()) {
            part.refusal =
                fmt::format("{}:{}: {}", source.shown, printable(name, 100), channel.refusal);
        }
        signals.push_back(part);
    }
    return signals;
}

static std::unique_ptr<SignalReader> open(const std::string& path, const SourceName& source,
                                          const ReadOptions& options) {
    return std::make_unique<MseedReader>(path, source, options);
}

extern const Part mseedPart = {"libmseed", version, parts, open, nullptr};
