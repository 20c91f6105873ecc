#include "workbench/files/Format.h"
#include "workbench/files/audio/audio.h"

static bool isRf64(std::string_view head) {
    return hasMark(head, "RF64", "WAVE");
}

static std::unique_ptr<SignalWriter> createRf64(const SignalTarget& target,
                                                const ResultInfo& info) {
    return createAudio({.name = "RF64"}, target, info);
}

// WAV with sizes of 64 bits in a chunk of their own (EBU Tech 3306, 2007).
extern const Format rf64Format = {
    "RF64", {".rf64"}, Format::Kind::sound, {.rate = true, .speakers = true, .tags = waveTags()},
    isRf64, openAudio, createRf64};
