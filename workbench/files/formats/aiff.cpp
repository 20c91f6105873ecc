#include "workbench/files/Format.h"
#include "workbench/files/audio/audio.h"

static bool isAiff(std::string_view head) {
    return hasMark(head, "FORM", "AIFF") || hasMark(head, "FORM", "AIFC");
}

static std::unique_ptr<SignalWriter> createAiff(const SignalTarget& target,
                                                const ResultInfo& info) {
    return createAudio({.name = "AIFF", .shortSizes = true}, target, info);
}

// AIFC holds what plain AIFF cannot, floating point among it.
extern const Format aiffFormat = {
    "AIFF",
    {".aif", ".aiff"},
    Format::Kind::sound,
    {.rate = true, .speakers = true, .tags = {"title", "artist", "comment", "copyright"}},
    isAiff,
    openAudio,
    createAiff};
