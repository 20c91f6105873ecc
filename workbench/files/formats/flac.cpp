#include "workbench/files/Format.h"
#include "workbench/files/audio/audio.h"

static bool isFlac(std::string_view head) {
    return head.starts_with("fLaC");
}

static std::unique_ptr<SignalWriter> createFlac(const SignalTarget& target,
                                                const ResultInfo& info) {
    return createAudio({.name = "FLAC"}, target, info);
}

// Integers, compressed without loss.
extern const Format flacFormat = {"FLAC",
                                  {".flac"},
                                  Format::Kind::sound,
                                  {.rate = true,
                                   .tags = {"title", "artist", "album", "track", "genre", "date",
                                            "comment", "copyright", "license"}},
                                  isFlac,
                                  openAudio,
                                  createFlac,
                                  Encoding::pcm24};
