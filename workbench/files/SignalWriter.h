#pragma once

#include "workbench/files/SignalAxis.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// How an audio file holds its samples. Integers have their full scale at 1.0. automatic is float64,
// in FLAC pcm24.
enum class Encoding { automatic, pcm16, pcm24, pcm32, float32, float64 };

struct ResultInfo {
    int channels = 1;
    std::int64_t samples = 0;              // per channel, as far as known beforehand
    double rate = 0.0;                     // Hz; 0: not known
    std::optional<SignalAxis> axis;        // with a rate only the start of a time axis counts
    std::vector<std::string> columnNames;  // one a channel; else "signal" or "signal_1", ...
    std::vector<std::string> notes;        // comment lines at the head of a text
};

// A signal being written. It takes its place on disk with finish; a writer that ends without it
// leaves nothing. After a Failure it can only be destroyed.
class SignalWriter {
public:
    virtual ~SignalWriter() = default;

    // The next count samples of every channel, interleaved. Failure if the disk is full, or if a
    // value does not fit the encoding: none is clipped.
    virtual void write(const double* interleaved, std::int64_t count) = 0;

    // Puts the notes, as lines of comment, at the end of a text, and the file in its place.
    virtual void finish(const std::vector<std::string>& closingNotes) = 0;
};

// Creates the file of that path for a signal, in the format that the ending of its name stands for;
// "-" is text on standard output.
//   .wav .w64 .rf64 .aif .aiff .flac   audio, at a rate of whole Hz. A .wav beyond 4 GiB is RF64.
//   .csv .tsv .txt .dat                text, separated by commas, tabs, blanks, blanks: the notes,
//                                      a header line, then the samples, each number in the fewest
//                                      digits that give it back. A rate gives a first column t_s in
//                                      seconds, an axis without a rate a column of its own name.
//   replace   An existing file may be replaced.
//   Failure   a format that cannot hold the signal, an existing file, no right to write.
std::unique_ptr<SignalWriter> createSignal(const std::string& path, bool replace, Encoding encoding,
                                           const ResultInfo& info);
