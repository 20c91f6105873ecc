#pragma once

#include "workbench/signals/SignalAxis.h"
#include "workbench/signals/SoundLabels.h"
#include "workbench/signals/SourceName.h"
#include "workbench/signals/TextOptions.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct SignalInfo {
    SourceName source;
    std::string sha256;              // of the bytes of the file, where that was asked for
    std::string format;              // "WAV, 16-bit PCM", "text"
    int channels = 0;                // at least 1
    std::int64_t samples = 0;        // per channel, at least 1; 0: as many as come, not yet known
    double rate = 0.0;               // Hz; 0: not known
    std::optional<SignalAxis> axis;  // of a text file of two samples or more
    std::vector<std::string> names;  // of the channels; empty without a header line
    // Of a text: by what its lines are divided, and the decimal sign of its numbers; '\0': neither
    // was met. Nothing for other formats.
    struct TextSigns {
        char separator = '\0', decimal = '\0';
    };
    std::optional<TextSigns> text;
    SoundLabels labels = {};  // of an audio file
    // What was taken as what, where the names of the columns do not say it: one sentence each.
    std::vector<std::string> remarks;
};

struct ReadOptions {
    bool allowNonfinite = false;  // NaN and infinity are samples like any other

    // Which columns of a text are what: names of its header, or numbers from 1. A text of a single
    // column is a signal whatever stands here.
    std::string axis;                  // "none": no axis; empty: as its numbers show
    std::vector<std::string> columns;  // that are channels, in this order; empty: all but the axis

    bool lossy = false;   // integers that no double holds are rounded
    bool digest = false;  // SHA-256 of the bytes that are read is wanted

    // A signal within the file: of a text, the column that is the only channel, whatever columns
    // says. Empty: none is named.
    std::string part = {};

    TextOptions text = {};
};

// A signal, read from its first sample to its last; a file in constant memory.
class SignalReader {
public:
    virtual ~SignalReader() = default;

    const SignalInfo& info() const { return facts; }
    void setDigest(const std::string& sha256) { facts.sha256 = sha256; }

    // Reads up to count samples of every channel, interleaved: count times channels values.
    // Returns how many samples; fewer only at the end, 0 after it. Failure if the file has changed
    // since it was opened.
    virtual std::int64_t read(double* interleaved, std::int64_t count) = 0;

protected:
    SignalInfo facts;
};
