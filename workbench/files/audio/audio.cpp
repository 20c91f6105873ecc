#include "workbench/files/audio/audio.h"

#include "workbench/files/audio/AudioLabels.h"
#include "workbench/files/audio/AudioReader.h"
#include "workbench/files/audio/AudioWriter.h"
#include "workbench/files/disk/FileStream.h"

#include <utility>

// Each container has some orders of loudspeakers alone: a file that is thrown away shows them. A
// channel mask is in the extended form of WAV.
bool holdsSpeakers(std::string_view container, const std::vector<std::string>& speakers) {
    const int code = container == "WAV" ? SF_FORMAT_WAVEX : containerCode(container);
    SF_INFO header = {};
    header.samplerate = 1;
    header.channels = static_cast<int>(speakers.size());
    header.format = code | SF_FORMAT_PCM_16;
    const FileHandle file = openTemporary();
    const SoundHandle sound = openSound(file.get(), SFM_WRITE, header);
    return sound != nullptr && writeSpeakers(sound.get(), speakers);
}

std::unique_ptr<SignalReader> openAudio(FileHandle file, const SourceName& source,
                                        const ReadOptions& options) {
    return std::make_unique<AudioReader>(std::move(file), source, options);
}

std::unique_ptr<SignalWriter> createAudio(const AudioContainer& container,
                                          const SignalTarget& target, const ResultInfo& info) {
    return std::make_unique<AudioWriter>(container, target, info);
}
