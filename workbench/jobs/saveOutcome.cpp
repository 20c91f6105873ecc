#include "workbench/jobs/saveOutcome.h"

#include "workbench/files/signalFiles.h"

#include <cstddef>

// Every third of the columns: value, lower, upper.
static Signal valuesOf(const Signal& banded, int channels) {
    Signal values{banded.info, {}};
    values.info.channels = channels;
    values.info.names.clear();
    for (std::size_t i = 0; i < banded.interleaved.size(); i += 3) {
        values.interleaved.push_back(banded.interleaved[i]);
    }
    return values;
}

std::string saveOutcome(const Outcome& outcome, const std::string& words,
                        const SignalTarget& target) {
    RunRecord record = outcome.record;
    record.words = words;
    const bool banded = outcome.result.info.channels != record.channels;
    const Signal result = banded && !holdsColumns(target.name)
                              ? valuesOf(outcome.result, record.channels)
                              : outcome.result;
    ResultInfo info;
    info.channels = result.info.channels;
    info.samples = result.info.samples;
    info.rate = result.info.rate;
    info.axis = result.info.axis;
    info.columnNames = result.info.names;
    info.notes = record.openingNotes();
    info.labels = result.info.labels;
    std::string lost = withoutPlace(target, info);
    const std::unique_ptr<SignalWriter> writer = createSignal(target, info);
    writer->write(result.interleaved.data(), result.info.samples);
    writer->finish(record.closingNotes());
    return lost;
}
