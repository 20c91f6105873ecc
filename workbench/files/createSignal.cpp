#include "workbench/files/audio/audio.h"
#include "workbench/files/signalFiles.h"
#include "workbench/files/text/TextWriter.h"
#include "workbench/messages/Failure.h"
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

static const Ending& endingOf(const SourceName& output) {
    std::string text = nameOf(pathOf(output.path).extension());
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
                              output.shown, known));
}

// Devices and pipes often have no ending; they get what standard output gets.
static bool isPlainStream(const SourceName& output) {
    const std::filesystem::path path = pathOf(output.path);
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    return output.isStandardStream() ||
           (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
            !std::filesystem::is_directory(status) && path.extension().empty());
}

std::unique_ptr<SignalWriter> createSignal(const std::string& path, bool replace, Encoding encoding,
                                           const ResultInfo& info) {
    const SourceName output = SourceName::ofOutput(path);
    const Ending ending = isPlainStream(output) ? Ending{"", ',', {}} : endingOf(output);
    if (ending.separator == '\0') {
        return createAudio(output, replace, ending.container, encoding, info);
    }
    if (encoding != Encoding::automatic) {
        throw Failure(
            fmt::format("{} is text, which has no encoding of samples; leave the encoding "
                        "out, or use the ending of an audio file",
                        output.shown));
    }
    return std::make_unique<TextWriter>(output, replace, ending.separator, info);
}
