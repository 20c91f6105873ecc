#include "workbench/commands/recordedWords.h"

#include "workbench/messages/Failure.h"
#include "workbench/signals/SourceName.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <fstream>

// The words of a line in which some stand in single quotes, as records have them.
static std::vector<std::string> wordsOf(const std::string& line) {
    std::vector<std::string> words;
    bool inWord = false, inQuotes = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char letter = line[i];
        if (letter == ' ' && !inQuotes) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.emplace_back();
            inWord = true;
        }
        if (letter == '\'') {
            inQuotes = !inQuotes;
        } else {
            const bool escapes = letter == '\\' && !inQuotes && i + 1 < line.size();
            words.back() += escapes ? line[++i] : letter;
        }
    }
    return words;
}

std::vector<std::string> recordedWords(const std::string& file) {
    std::ifstream stream(pathOf(file), std::ios::binary);
    try {
        const nlohmann::json record = nlohmann::json::parse(stream);
        return wordsOf(record.value("rerun", record.at("command").get<std::string>()));
    } catch (const nlohmann::json::exception&) {
        throw Failure(
            fmt::format("{} is not a record of a run; give a file with what --json has printed",
                        SourceName(file).shown));
    }
}
