#include "workbench/files/Format.h"
#include "workbench/files/audio/audio.h"
#include "workbench/files/signalFiles.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

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
        if (format->create != nullptr &&
            std::find(endings.begin(), endings.end(), ending) != endings.end()) {
            return *format;
        }
    }
    throw Failure(fmt::format("{}: the ending of the name does not give the format; use one of {}",
                              name.shown, Format::allEndings()));
}

bool holdsColumns(const SourceName& target) {
    return formatFor(target).kind != Format::Kind::sound;
}

Encoding storedEncoding(const SignalTarget& target) {
    const Format& format = formatFor(target.name);
    return target.encoding == Encoding::automatic ? format.stored : target.encoding;
}

static std::string describe(const SignalAxis& axis) {
    return fmt::format("the axis {} from {} in steps of {}", printable(axis.name), axis.start,
                       axis.step);
}

static bool holds(const Format::Places& places, const SignalAxis& axis) {
    return places.axis && (!places.onlyRisingTime || (axis.time && axis.step > 0.0));
}

// Names that a text gives to channels without any say nothing.
static bool losesNames(const Format::Places& places, const ResultInfo& info) {
    const auto isHeld = [&places](const std::string& name) {
        return places.names && (places.holdsName == nullptr || places.holdsName(name));
    };
    int channel = 0;
    return std::any_of(
        info.columnNames.begin(), info.columnNames.end(), [&](const std::string& name) {
            const bool own =
                name != (info.channels == 1 ? "signal" : fmt::format("signal_{}", ++channel));
            return own && !isHeld(name);
        });
}

// Those of one or two channels mean what the channels mean without them.
static bool tellMoreThanTheirNumber(const std::vector<std::string>& speakers) {
    return !speakers.empty() && speakers != std::vector<std::string>{"mono"} &&
           speakers != std::vector<std::string>{"front center"} &&
           speakers != std::vector<std::string>{"front left", "front right"};
}

static void addLostLabels(const Format& format, const SoundLabels& labels,
                          std::vector<std::string>& lost) {
    std::vector<std::string> tags;
    for (const SoundLabels::Tag& tag : labels.tags) {
        if (std::count(format.places.tags.begin(), format.places.tags.end(), tag.name) == 0) {
            tags.push_back(tag.name);
        }
    }
    if (!tags.empty()) {
        lost.push_back(fmt::format("the tags ({})", fmt::join(tags, ", ")));
    }
    if (tellMoreThanTheirNumber(labels.speakers) &&
        !(format.places.speakers && holdsSpeakers(format.name, labels.speakers))) {
        lost.push_back(fmt::format("the loudspeakers ({})", fmt::join(labels.speakers, ", ")));
    }
}

std::string withoutPlace(const SignalTarget& target, const ResultInfo& info) {
    const Format& format = formatFor(target.name);
    std::vector<std::string> lost;
    if (!format.places.rate && info.rate > 0.0) {
        lost.push_back(fmt::format("the rate of {} Hz", info.rate));
    }
    const bool fromZero = info.axis && info.axis->time && info.axis->start == 0.0 &&
                          info.axis->step > 0.0;  // as a rate alone has it
    if (info.axis && !fromZero && !holds(format.places, *info.axis)) {
        lost.push_back(describe(*info.axis));
    }
    if (losesNames(format.places, info)) {
        lost.emplace_back("the names of the channels");
    }
    addLostLabels(format, info.labels, lost);
    const std::string last = lost.empty() ? "" : lost.back();
    lost.resize(lost.empty() ? 0 : lost.size() - 1);
    return lost.empty() ? last : fmt::format("{} and {}", fmt::join(lost, ", "), last);
}

std::unique_ptr<SignalWriter> createSignal(const SignalTarget& target, const ResultInfo& info) {
    const Format& format = formatFor(target.name);
    const bool measurement = format.kind == Format::Kind::measurement;
    if (measurement && info.axis && !info.axis->time && !holds(format.places, *info.axis) &&
        !target.lossy) {
        throw Failure(
            fmt::format("{} has no place for {}; use --lossy to lose it, or write text, as with "
                        "-o FILE.csv",
                        target.name.shown, describe(*info.axis)));
    }
    return format.create(target, info);
}
