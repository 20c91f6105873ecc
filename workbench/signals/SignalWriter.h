#pragma once

#include "workbench/signals/Encoding.h"
#include "workbench/signals/SignalAxis.h"
#include "workbench/signals/SoundLabels.h"
#include "workbench/signals/SourceName.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Where a signal is to be written.
struct SignalTarget {
    SourceName name;                          // made by SourceName::ofOutput
    bool replace = false;                     // an existing file may be replaced
    Encoding encoding = Encoding::automatic;  // a text has no other
    bool dither = false;                      // noise before an integer encoding; Dither
    bool lossy = false;                       // an axis without a place there may be lost
};

struct ResultInfo {
    int channels = 1;
    std::int64_t samples = 0;              // per channel, as far as known beforehand
    double rate = 0.0;                     // Hz; 0: not known
    std::optional<SignalAxis> axis;        // of a time axis with a rate, start and direction
    std::vector<std::string> columnNames;  // one a channel; else "signal" or "signal_1", ...
    std::vector<std::string> notes;        // comment lines at the head of a text
    SoundLabels labels = {};               // for an audio file
};

// A signal being written. The file takes its place on disk with finish; without it nothing is left.
// After a Failure the writer can only be destroyed.
class SignalWriter {
public:
    virtual ~SignalWriter() = default;

    // The next count samples of every channel, interleaved. Failure if the disk is full, or if a
    // value does not fit the encoding: none is clipped.
    virtual void write(const double* interleaved, std::int64_t count) = 0;

    // Hands on what was written so far, where the target is read as it is written.
    virtual void flush() {}

    // Appends the notes, as lines of comment, to a text, and puts the file in its place.
    virtual void finish(const std::vector<std::string>& closingNotes) = 0;
};
