#include "fuzz/fuzz.h"
#include "fuzz/signals.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <algorithm>
#include <cmath>

// An input is a byte of options, with one of its bits a second one of what is told of the layout,
// and a text file.

// Bytes that cannot be shown are written as question marks, and then say something else.
static bool isShowable(const std::string& name) {
    return printable(name) == name;
}

// Where an axis is far from 0 against its step, sums round its points: then the way back may not be
// the way there.
static bool isPlain(const SignalAxis& axis) {
    return isShowable(axis.name) && std::abs(axis.step) > 1e-100 && std::abs(axis.step) < 1e100 &&
           std::abs(axis.start) < 1e9 * std::abs(axis.step);
}

static void requireSameAxis(const SignalInfo& before, const SignalInfo& after) {
    require(after.axis && after.axis->time == before.axis->time,
            "an axis is one of its kind again");
    const double step = std::abs(before.axis->step), rounding = 1e-6 * step;
    require(std::signbit(after.axis->step) == std::signbit(before.axis->step) &&
                std::abs(before.axis->start - after.axis->start) <= rounding,
            "and runs from the same point the same way");
    // Zeros at the end of a number are not written, so a rounder step than before may fit.
    require(step >= after.axis->lowestStep - rounding && step <= after.axis->highestStep + rounding,
            "and its step is one of those that fit what was written");
}

static void checkRoundTrip(const SignalInfo& info, const std::vector<double>& samples,
                           const std::string& ending) {
    ResultInfo result;
    result.channels = info.channels;
    result.columnNames = info.names;
    // The axis is chosen by its number, before which names go.
    const bool withAxis = info.axis && isPlain(*info.axis) &&
                          std::count(info.names.begin(), info.names.end(), "1") == 0;
    if (withAxis) {
        result.rate = info.rate;
        result.axis = info.axis;
    }
    const auto reader = writtenAndOpened(ending, samples, result,
                                         {.allowNonfinite = true, .axis = withAxis ? "1" : "none"});
    require(reader->info().channels == info.channels, "what was written has the same channels");
    require(sameSamples(samplesOf(*reader, true), samples), "and the same samples");
    if (std::all_of(info.names.begin(), info.names.end(), isShowable)) {
        require(info.names.empty() || reader->info().names == info.names, "and the same names");
    }
    if (withAxis) {
        requireSameAxis(info, reader->info());
    }
}

static TextOptions toldBy(std::uint8_t choice) {
    static constexpr char separators[] = {';', ',', '\t', ' '};
    TextOptions options;
    if ((choice & 1U) != 0) {
        options.separator = separators[choice >> 1U & 3U];
    }
    if ((choice & 8U) != 0) {
        options.decimal = (choice & 16U) != 0 ? ',' : '.';
    }
    options.skip = choice >> 5U & 1U;
    options.comment = (choice & 64U) != 0 ? '!' : '#';
    options.missing = (choice & 128U) != 0 ? "x" : "";
    return options;
}

void fuzzOne(Bytes input) {
    InputReader bytes(input);
    const std::uint8_t choice = bytes.byte();
    ReadOptions options;
    options.allowNonfinite = (choice & 1U) != 0;
    options.axis = (choice & 2U) != 0 ? "" : "none";
    if ((choice & 16U) != 0) {
        options.axis = "2";
        options.columns = {"1"};
    }
    if ((choice & 64U) != 0) {
        options.text = toldBy(bytes.byte());
    }
    options.text.fillGaps = (choice & 32U) != 0;
    static const std::string endings[] = {".csv", ".tsv", ".txt", ".dat"};
    const MemoryFile file(bytes.text(input.size()));
    try {
        const auto reader = openSignal(SourceName(file.path()), options);
        const std::vector<double> samples = samplesOf(*reader, options.allowNonfinite);
        checkRoundTrip(reader->info(), samples, endings[choice >> 2U & 3U]);
    } catch (const Failure& refusal) {
        requireShowable(refusal.what());
    }
}
