#include "workbench/files/audio/audio.h"

#include "workbench/files/audio/AudioReader.h"
#include "workbench/files/audio/AudioWriter.h"

#include <utility>

std::unique_ptr<SignalReader> openAudio(FileHandle audio, const std::string& path,
                                        const ReadOptions& options) {
    return std::make_unique<AudioReader>(std::move(audio), path, options);
}

std::unique_ptr<SignalWriter> createAudio(const std::string& path, bool replace,
                                          AudioContainer container, Encoding encoding,
                                          const ResultInfo& info) {
    return std::make_unique<AudioWriter>(path, replace, container, encoding, info);
}
