#pragma once

#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"
#include "workbench/system/FileHandle.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct PartProgram;

// A format of signal files: a constant in a source of its own in formats/, and a word in
// CMakeLists.txt. Whatever else is said of formats is made from these rows.
struct Format {
    const char* name;                  // "WAV"
    std::vector<const char*> endings;  // of file names, in lower case: ".aif", ".aiff"

    // What its numbers are: sound, with a full scale of 1.0; measurements, in units of their own;
    // or columns of text.
    enum class Kind { sound, measurement, text };
    Kind kind;

    // What it has a place for beside the samples. Names of channels hold their units; of the labels
    // of a sound, tags are named here.
    struct Places {
        bool rate = false, axis = false, names = false, notes = false, speakers = false;
        bool onlyRisingTime = false;  // the axis is such a one
        // Whether the place of names has room for this one; null: for any.
        bool (*holdsName)(const std::string& name) = nullptr;
        std::vector<std::string> tags = {};
    };
    Places places;

    // Whether a file with these first bytes, at most 2056, is of this format.
    bool (*recognises)(std::string_view head);

    // What openSignal and createSignal do for the format, which is not written if create is null.
    // The file is at its start; of one with parts, options.part is one of them.
    std::unique_ptr<SignalReader> (*open)(FileHandle file, const SourceName& source,
                                          const ReadOptions& options);
    std::unique_ptr<SignalWriter> (*create)(const SignalTarget& target, const ResultInfo& info);

    // How samples are stored where nothing else is asked for.
    Encoding stored = Encoding::float64;

    // The parts of a file that can hold several signals; null: a file is one signal, or names its
    // columns itself, as text does. The file is at its start, and may be left anywhere. Failure if
    // the file is broken.
    std::vector<FilePart> (*parts)(std::FILE* file, const SourceName& source) = nullptr;

    // By which all of this is done; null: by fendra itself.
    const PartProgram* program = nullptr;

    // In the order in which they are tried on a file.
    static const std::vector<const Format*>& all();

    // What this system has of them. All names, with that word before the last: "WAV, W64, RF64, ...
    // and UTF-8 text".
    static std::string names(std::string_view lastWord);

    // All endings of what can be written: ".wav .w64 .rf64 ... .txt .dat".
    static std::string allEndings();
};
