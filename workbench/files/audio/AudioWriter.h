#pragma once

#include "workbench/files/audio/SoundStream.h"
#include "workbench/files/audio/audio.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/signals/Dither.h"
#include "workbench/signals/SignalWriter.h"

#include <cstdint>
#include <string>
#include <vector>

// How the samples of an audio file are stored.
struct AudioFormat {
    // Failure if the container cannot hold the signal in the target's encoding, or its rate.
    AudioFormat(const AudioContainer& container, const SignalTarget& target,
                const ResultInfo& info);

    SF_INFO header = {};
    int integerBits = 0;    // 0: floating point
    bool narrow = false;    // floating point of 32 bits
    bool dithered = false;  // of integers
};

// Audio through libsndfile. The notes of the result have no place in it. The same samples give the
// same bytes, whenever they are written.
class AudioWriter final : public SignalWriter {
public:
    AudioWriter(const AudioContainer& container, const SignalTarget& target,
                const ResultInfo& info);

    void write(const double* interleaved, std::int64_t count) override;
    void finish(const std::vector<std::string>& closingNotes) override;

private:
    bool fits(double value) const;
    int integerOf(double value);
    [[noreturn]] void refuse(double misfit, std::int64_t index) const;
    void writeBlock(const double* values, std::size_t count);
    void checkStream(bool allDone);
    std::FILE* stream() const { return spool != nullptr ? spool.get() : output.stream(); }

    std::string name;          // for messages
    AudioFormat format;        // made, and found possible, before the file
    double fullScale;          // of an integer
    std::int64_t written = 0;  // values
    std::vector<int> integers;
    Dither dither;
    OutputFile output;
    FileHandle spool;   // holds the audio for an output that cannot be sought in
    SoundHandle sound;  // ends before the file that it writes to
};
