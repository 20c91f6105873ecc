#include "workbench/parts/mseed/MseedChannel.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

static constexpr double second = HPTMODULUS;

MseedChannel::MseedChannel(const MseedRecords& first)
    : encoding(first.encoding()),
      rate(first.record().samprate),
      start(first.record().starttime),
      due(static_cast<double>(start)) {
    if (first.record().encoding == DE_ASCII) {
        refusal = "text, which is not a signal; choose another channel";
    } else if (!std::isfinite(rate) || rate <= 0.0) {
        refusal = "the channel has no sampling rate, as one of events; choose another channel";
    }
    add(first);
}

std::string MseedChannel::faultOf(const MseedRecords& next) const {
    constexpr double sameRate = 1e-4;        // times the rate
    constexpr double timeResolution = 1e-4;  // s
    const MSRecord& record = next.record();
    if (!(std::abs(record.samprate - rate) <= sameRate * rate)) {
        return fmt::format("the rate changes from {} to {} Hz; save the file in two there", rate,
                           record.samprate);
    }
    const double late = (static_cast<double>(record.starttime) - due) / second;
    if (std::abs(late) <= std::max(0.5 / rate, timeResolution)) {
        return "";
    }
    return late > 0.0 ? fmt::format(
                            "a gap of {:.6g} s before {}; save what is before and after it "
                            "as files of their own",
                            late, timeText(record.starttime))
                      : fmt::format(
                            "an overlap of {:.6g} s: the record begins at {}, before "
                            "the one before it ends; keep each once, in the order of time",
                            -late, timeText(record.starttime));
}

void MseedChannel::add(const MseedRecords& next) {
    const MSRecord& record = next.record();
    const std::string broken = refusal.empty() && fault.empty() ? faultOf(next) : "";
    if (!broken.empty()) {
        fault = fmt::format("record at byte {}: {}", next.begin(), broken);
    }
    samples += record.samplecnt;
    due = static_cast<double>(record.starttime) +
          static_cast<double>(record.samplecnt) / rate * second;
}

std::map<std::string, MseedChannel> channelsOf(MseedRecords& records) {
    std::map<std::string, MseedChannel> channels;
    while (records.next()) {
        const std::string name = records.channel();
        const auto channel = channels.find(name);
        if (channel == channels.end()) {
            channels.emplace(name, records);
        } else {
            channel->second.add(records);
        }
    }
    return channels;
}
