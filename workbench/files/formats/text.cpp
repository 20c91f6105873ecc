#include "workbench/files/Format.h"
#include "workbench/files/text/TextReader.h"
#include "workbench/files/text/TextWriter.h"
#include "workbench/system/fileNames.h"

#include <algorithm>
#include <utility>

static bool isText(std::string_view head) {
    head = head.substr(0, 256);
    return std::none_of(head.begin(), head.end(), [](char letter) {
        const auto code = static_cast<unsigned char>(letter);
        return code < ' ' && letter != '\t' && letter != '\n' && letter != '\r';
    });
}

static char separatorFor(const SignalTarget& target) {
    const std::string ending = lowerCaseEnding(target.name.path);
    const bool blanks = ending == ".txt" || ending == ".dat" || ending == ".xy";
    return ending == ".tsv" ? '\t' : blanks ? ' ' : ',';
}

static std::unique_ptr<SignalReader> openText(FileHandle file, const SourceName& source,
                                              const ReadOptions& options) {
    return std::make_unique<TextReader>(std::move(file), source, options);
}

static std::unique_ptr<SignalWriter> createText(const SignalTarget& target,
                                                const ResultInfo& info) {
    return std::make_unique<TextWriter>(target, separatorFor(target), info);
}

// Columns of numbers. What separates them is found when they are read; when they are written, the
// ending of the name decides.
extern const Format textFormat = {"UTF-8 text",
                                  {".csv", ".tsv", ".txt", ".dat", ".xy"},
                                  Format::Kind::text,
                                  {.rate = true, .axis = true, .names = true, .notes = true},
                                  isText,
                                  openText,
                                  createText};
