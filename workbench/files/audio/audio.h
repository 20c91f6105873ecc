#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"
#include "workbench/system/FileHandle.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A kind of audio file.
struct AudioContainer {
    std::string_view name;           // the library's usual ending of a file name, in capitals
    bool shortSizes = false;         // of 32 bits in its header: it holds at most 4 GiB
    std::string_view longForm = {};  // the container that takes its place beyond that; empty: none
};

// The tags that WAV has a place for, and RF64 as well.
inline std::vector<std::string> waveTags() {
    return {"title", "artist", "album", "track", "genre", "date", "comment", "copyright"};
}

// Whether a container of that name can tell where these loudspeakers stand, one for each channel.
bool holdsSpeakers(std::string_view container, const std::vector<std::string>& speakers);

// Whether a file with these first bytes has those marks at bytes 0 and 8.
inline bool hasMark(std::string_view head, std::string_view atStart, std::string_view atEight) {
    return head.size() >= 12 && head.starts_with(atStart) && head.substr(8).starts_with(atEight);
}

// The file is at its start. Failure as openSignal, whatever the container.
std::unique_ptr<SignalReader> openAudio(FileHandle file, const SourceName& source,
                                        const ReadOptions& options);

// Failure as createSignal.
std::unique_ptr<SignalWriter> createAudio(const AudioContainer& container,
                                          const SignalTarget& target, const ResultInfo& info);
