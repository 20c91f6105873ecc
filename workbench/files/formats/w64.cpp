#include "workbench/files/Format.h"
#include "workbench/files/audio/audio.h"

static bool isW64(std::string_view head) {
    return hasMark(head, "riff\x2e\x91\xcf\x11", "\xa5\xd6\x28\xdb");
}

static std::unique_ptr<SignalWriter> createW64(const SignalTarget& target, const ResultInfo& info) {
    return createAudio({.name = "W64"}, target, info);
}

// WAV with sizes of 64 bits and ids of 16 bytes.
extern const Format w64Format = {"W64",     {".w64"}, Format::Kind::sound, {.rate = true}, isW64,
                                 openAudio, createW64};
