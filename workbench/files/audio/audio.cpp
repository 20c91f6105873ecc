#include "workbench/files/audio/audio.h"

#include "workbench/files/audio/AudioReader.h"
#include "workbench/files/audio/AudioWriter.h"

#include <utility>

std::unique_ptr<SignalReader> openAudio(FileHandle file, const SourceName& source,
                                        const ReadOptions& options) {
    return std::make_unique<AudioReader>(std::move(file), source, options);
}

std::unique_ptr<SignalWriter> createAudio(const AudioContainer& container,
                                          const SignalTarget& target, const ResultInfo& info) {
    return std::make_unique<AudioWriter>(container, target, info);
}
