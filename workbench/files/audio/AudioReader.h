#pragma once

#include "workbench/files/audio/SoundStream.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/signals/SignalReader.h"

// Audio through libsndfile, in its normalised scale: the full scale of integers is 1.0.
class AudioReader final : public SignalReader {
public:
    // Decodes the whole file once, unless its header and size show how much can be read.
    AudioReader(FileHandle audio, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    SF_INFO openFromStart();
    void takeLabels();
    void scan(std::int64_t declared, bool allowNonfinite);

    FileHandle file;
    SoundHandle sound;
    std::int64_t position = 0;
};
