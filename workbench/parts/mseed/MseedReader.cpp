#include "workbench/parts/mseed/MseedReader.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/mseed/MseedChannel.h"

#include <fmt/format.h>

#include <algorithm>

MseedReader::MseedReader(const std::string& path, const SourceName& source,
                         const ReadOptions& options)
    : records(path, source.shown), channel(options.part) {
    MseedRecords all(path, source.shown);
    const auto channels = channelsOf(all);
    const auto chosen = channels.find(channel);
    if (chosen == channels.end() || !chosen->second.refusal.empty()) {
        throw Failure(fmt::format("{}: the file has changed meanwhile; try again", source.shown));
    }
    const MseedChannel& found = chosen->second;
    if (!found.fault.empty()) {
        throw Failure(fmt::format("{}, {}", source.shown, found.fault));
    }
    facts.source = source;
    facts.format = fmt::format("miniSEED, {}", found.encoding);
    facts.channels = 1;
    facts.samples = found.samples;
    facts.rate = found.rate;
    facts.names = {channel};
    facts.remarks = {fmt::format("{} starts at {} UTC", source.shown, timeText(found.start))};
}

// Goes to the next record of the channel that has samples. False if there is none.
bool MseedReader::fill() {
    block.clear();
    taken = 0;
    while (block.empty() && records.next()) {
        if (records.channel() == channel) {
            records.appendSamples(block);
        }
    }
    return !block.empty();
}

std::int64_t MseedReader::read(double* interleaved, std::int64_t count) {
    std::int64_t got = 0;
    while (got < count && (taken < block.size() || fill())) {
        const auto length = std::min(count - got, static_cast<std::int64_t>(block.size() - taken));
        std::copy_n(block.data() + taken, length, interleaved + got);
        taken += static_cast<std::size_t>(length);
        got += length;
    }
    return got;
}
