#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"
#include "workbench/system/FileHandle.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A format of signal files: a constant in a source of its own in formats/, and a word in
// CMakeLists.txt. Whatever else is said of formats is made from these rows.
struct Format {
    const char* name;                  // "WAV"
    std::vector<const char*> endings;  // of file names, in lower case: ".aif", ".aiff"

    // What it holds: channels of sound, with a rate and a full scale of 1.0; columns of any meaning
    // and nothing beside them; or lines with columns, their names, an axis and notes.
    enum class Kind { sound, array, text };
    Kind kind;

    // Whether a file with these first bytes, at most 256, is of this format.
    bool (*recognises)(std::string_view head);

    // What openSignal and createSignal do for the format, which is not written if create is null.
    // The file is at its start.
    std::unique_ptr<SignalReader> (*open)(FileHandle file, const SourceName& source,
                                          const ReadOptions& options);
    std::unique_ptr<SignalWriter> (*create)(const SignalTarget& target, const ResultInfo& info);

    bool integersAlone = false;  // it holds no floating-point samples
    bool parts = false;          // it holds several signals, each with a name

    // In the order in which they are tried on a file.
    static const std::vector<const Format*>& all();

    // All names, with that word before the last: "WAV, W64, RF64, AIFF, FLAC, npy, npz and UTF-8
    // text".
    static std::string names(std::string_view lastWord);

    // All endings of what can be written: ".wav .w64 .rf64 .aif .aiff .flac .npy .csv .tsv .txt
    // .dat".
    static std::string allEndings();
};
