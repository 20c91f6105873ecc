#include "workbench/files/Format.h"
#include "workbench/files/audio/audio.h"

static bool isWav(std::string_view head) {
    return hasMark(head, "RIFF", "WAVE") || hasMark(head, "RIFX", "WAVE");
}

static std::unique_ptr<SignalWriter> createWav(const SignalTarget& target, const ResultInfo& info) {
    return createAudio({.name = "WAV", .shortSizes = true, .longForm = "RF64"}, target, info);
}

// RIFX is RIFF with the bytes of its numbers the other way round.
extern const Format wavFormat = {"WAV",
                                 {".wav"},
                                 Format::Kind::sound,
                                 {.rate = true, .speakers = true, .tags = waveTags()},
                                 isWav,
                                 openAudio,
                                 createWav};
