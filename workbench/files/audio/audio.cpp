#include "workbench/files/audio/audio.h"

#include "workbench/files/audio/AudioReader.h"
#include "workbench/files/audio/AudioWriter.h"

#include <utility>

std::unique_ptr<SignalReader> openAudio(FileHandle audio, const SourceName& source,
                                        const ReadOptions& options) {
    return std::make_unique<AudioReader>(std::move(audio), source, options);
}

std::unique_ptr<SignalWriter> createAudio(const SourceName& output, bool replace,
                                          AudioContainer container, Encoding encoding,
                                          const ResultInfo& info) {
    return std::make_unique<AudioWriter>(output, replace, container, encoding, info);
}
