#include "workbench/files/instrument/UffReader.h"

#include "workbench/files/instrument/fields.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <utility>

static constexpr const char* allName = "all";
static bool sameAxis(const UffDataset& left, const UffDataset& right) {
    const bool both = left.axis.has_value() && right.axis.has_value();
    return left.count == right.count && left.rate == right.rate &&
           left.axis.has_value() == right.axis.has_value() &&
           (!both ||
            (left.axis->name == right.axis->name && left.axis->start == right.axis->start &&
             left.axis->step == right.axis->step));
}

static bool areChannels(const std::vector<UffDataset>& datasets) {
    return datasets.size() > 1 && datasets.size() <= std::numeric_limits<int>::max() &&
           std::all_of(datasets.begin(), datasets.end(), [&](const UffDataset& each) {
               return each.refusal.empty() && sameAxis(each, datasets.front());
           });
}

static std::string typeName(const UffDataset& dataset) {
    return dataset.binary ? fmt::format("{}-bit float", 8 * dataset.bytes) : "text";
}

std::vector<FilePart> UffReader::parts(std::FILE* file, const SourceName& source) {
    const std::vector<UffDataset> datasets = UffDataset::allOf(file, source.shown);
    std::vector<FilePart> parts;
    for (const UffDataset& dataset : datasets) {
        FilePart& part = parts.emplace_back();
        part.name = fmt::format("{}", parts.size());
        part.what = fmt::format("{}{}{}, {}", printable(dataset.name, 60),
                                dataset.name.empty() ? "" : ", ", typeName(dataset), dataset.count);
        if (!dataset.refusal.empty()) {
            part.refusal = fmt::format("{}:{} {}", source.shown, part.name, dataset.refusal);
        }
    }
    if (areChannels(datasets)) {
        parts.push_back({allName,
                         fmt::format("{}, {} x {}", typeName(datasets.front()),
                                     datasets.front().count, datasets.size()),
                         ""});
    }
    return parts;
}

// The file may have changed since its parts were listed.
static std::vector<UffDataset> chosenDatasets(std::FILE* file, const SourceName& source,
                                              const std::string& part) {
    std::vector<UffDataset> datasets = UffDataset::allOf(file, source.shown);
    if (part == allName && areChannels(datasets)) {
        return datasets;
    }
    const auto index = static_cast<std::size_t>(wholeNumber(part).value_or(0) - 1);
    if (index >= datasets.size() || !datasets[index].refusal.empty()) {
        throw Failure(fmt::format("{} has changed meanwhile; try again", source.shown));
    }
    return {datasets[index]};
}

UffReader::UffReader(FileHandle opened, const SourceName& source, const ReadOptions& options)
    : file(std::move(opened)), channels(chosenDatasets(file.get(), source, options.part)) {
    facts.source = source;
    setFacts();
    rewind();
    const bool text = std::any_of(channels.begin(), channels.end(),
                                  [](const UffDataset& each) { return !each.binary; });
    if (text || !options.allowNonfinite) {
        readThrough(options.allowNonfinite);
    }
    rewind();
}

void UffReader::setFacts() {
    const UffDataset& first = channels.front();
    facts.format = first.binary ? fmt::format("UFF 58b, {}-bit float", 8 * first.bytes)
                                : std::string("UFF 58, text");
    facts.channels = static_cast<int>(channels.size());
    facts.samples = first.count;
    facts.rate = first.rate;
    facts.axis = first.axis;
    const bool named = std::any_of(channels.begin(), channels.end(),
                                   [](const UffDataset& each) { return !each.name.empty(); });
    for (const UffDataset& each : channels) {
        if (named) {
            facts.names.push_back(each.name.empty()
                                      ? fmt::format("signal_{}", facts.names.size() + 1)
                                      : printable(each.name));
        }
    }
}

// Puts the first sample next.
void UffReader::rewind() {
    constexpr std::size_t all = std::size_t{1} << 22, least = 512;  // bytes of text in memory
    const std::size_t share = std::clamp(all / channels.size(), least, LineCursor::defaultBlock);
    values.clear();
    for (const UffDataset& each : channels) {
        values.emplace_back(file.get(), each, facts.source.shown, share);
    }
    restart();
}

void UffReader::fill(std::int64_t /*first*/, std::int64_t count, double* to) {
    const auto width = channels.size();
    column.resize(static_cast<std::size_t>(count));
    for (std::size_t c = 0; c < width; ++c) {
        values[c].read(column.data(), column.size());
        for (std::size_t i = 0; i < column.size(); ++i) {
            to[i * width + c] = column[i];
        }
    }
}
