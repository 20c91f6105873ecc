#pragma once

#include "workbench/files/disk/OutputFile.h"
#include "workbench/files/disk/SampleStore.h"
#include "workbench/signals/SignalWriter.h"

#include <cstdint>
#include <string>
#include <vector>

// A signal as datasets 58b of a universal file, one a channel: little-endian 64-bit floats, with
// the axis, and the name and unit of the channel. The name stands in the first line of
// identification as well, notes in the others, as far as they fit. The channels wait in temporary
// files, since they stand one after the other there.
class UffWriter final : public SignalWriter {
public:
    // Failure if the target has an encoding of another kind or cannot be written; if the abscissa's
    // places of 13 columns do not hold the axis, unless the target is lossy.
    UffWriter(const SignalTarget& target, const ResultInfo& result);

    // Whether a name fits into that line.
    static bool holdsName(const std::string& name);

    void write(const double* interleaved, std::int64_t count) override;
    void finish(const std::vector<std::string>& closingNotes) override;

private:
    [[nodiscard]] bool holds(const SignalAxis& axis) const;
    [[nodiscard]] std::string head(std::size_t channel,
                                   const std::vector<std::string>& notes) const;

    std::string name;
    ResultInfo info;
    std::string start, step;   // of the abscissa, as they are written
    std::string abscissaName;  // with its unit
    std::int64_t abscissaType = 0, samples = 0;
    OutputFile output;
    std::vector<SampleStore> channels;
    std::vector<double> column;
};
