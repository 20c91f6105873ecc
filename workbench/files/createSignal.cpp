#include "workbench/files/audio/audio.h"
#include "workbench/files/signalFiles.h"
#include "workbench/files/text/TextWriter.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string_view>

// What an ending of a file name stands for: a text separator or, if '\0', an audio container.
struct Ending {
    std::string_view text;
    char separator;
    AudioContainer container;
};

static constexpr std::array endings = {Ending{".wav", '\0', AudioContainer::wav},
                                       Ending{".w64", '\0', AudioContainer::w64},
                                       Ending{".rf64", '\0', AudioContainer::rf64},
                                       Ending{".aif", '\0', AudioContainer::aiff},
                                       Ending{".aiff", '\0', AudioContainer::aiff},
                                       Ending{".flac", '\0', AudioContainer::flac},
                                       Ending{".csv", ',', {}},
                                       Ending{".tsv", '\t', {}},
                                       Ending{".txt", ' ', {}},
                                       Ending{".dat", ' ', {}}};

static const Ending& endingOf(const std::string& path) {
    std::string text = nameOf(pathOf(path).extension());
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const auto* found = std::find_if(endings.begin(), endings.end(),
                                     [&text](const Ending& ending) { return ending.text == text; });
    if (found != endings.end()) {
        return *found;
    }
    std::string known;
    for (const Ending& ending : endings) {
        known += fmt::format(" {}", ending.text);
    }
    throw Failure(fmt::format("{}: the ending of the name does not tell the format; use one of{}",
                              printable(path), known));
}

// Devices and pipes often have no ending; they get what standard output gets.
static bool isPlainStream(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(pathOf(path), ignored);
    return path == "-" ||
           (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
            !std::filesystem::is_directory(status) && pathOf(path).extension().empty());
}

std::unique_ptr<SignalWriter> createSignal(const std::string& path, bool replace, Encoding encoding,
                                           const ResultInfo& info) {
    const Ending ending = isPlainStream(path) ? Ending{"", ',', {}} : endingOf(path);
    if (ending.separator == '\0') {
        return createAudio(path, replace, ending.container, encoding, info);
    }
    if (encoding != Encoding::automatic) {
        throw Failure(
            fmt::format("{} is text, which has no encoding of samples; leave the encoding "
                        "out, or use the ending of an audio file",
                        path == "-" ? "standard output" : printable(path)));
    }
    return std::make_unique<TextWriter>(path, replace, ending.separator, info);
}
