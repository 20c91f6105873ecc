#include "workbench/files/audio/audio.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

[[noreturn]] static void refuse(const std::string& path) {
    throw Failure(fmt::format(
        "{} is audio, which fendra for this system cannot read or write; use columns of text, "
        "say .csv",
        printable(path)));
}

std::unique_ptr<SignalReader> openAudio(FileHandle /*audio*/, const std::string& path,
                                        const ReadOptions& /*options*/) {
    refuse(path);
}

std::unique_ptr<SignalWriter> createAudio(const std::string& path, bool /*replace*/,
                                          AudioContainer /*container*/, Encoding /*encoding*/,
                                          const ResultInfo& /*info*/) {
    refuse(path);
}
