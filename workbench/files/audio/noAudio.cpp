#include "workbench/files/audio/audio.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

[[noreturn]] static void refuse(const SourceName& name) {
    throw Failure(fmt::format(
        "{} is audio, which fendra for this system cannot read or write; use columns of text, "
        "say .csv",
        name.shown));
}

std::unique_ptr<SignalReader> openAudio(FileHandle /*file*/, const SourceName& source,
                                        const ReadOptions& /*options*/) {
    refuse(source);
}

std::unique_ptr<SignalWriter> createAudio(const AudioContainer& /*container*/,
                                          const SignalTarget& target, const ResultInfo& /*info*/) {
    refuse(target.name);
}
