#include "workbench/files/parts/PartProgram.h"

#include "workbench/files/disk/FileStream.h"
#include "workbench/files/disk/PartialFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/signals/Transfer.h"
#include "workbench/system/Program.h"
#include "workbench/system/SharedLibrary.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/offer.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <utility>

static std::filesystem::path fileOf(const PartProgram& program) {
    return SharedLibrary::ownFolder() / program.name;
}

static std::string lastLine(std::string text) {
    while (text.ends_with('\n')) {
        text.pop_back();
    }
    return printable(text.substr(text.rfind('\n') + 1));
}

// The line of a failure. about: the file or what else it is about, and a colon.
static std::string complaint(const PartProgram& program, const ProgramEnd& end,
                             const std::string& about) {
    constexpr int libraryMissing = 127;  // the status where a program cannot be loaded
    constexpr int signals = 128;
    if (end.status == libraryMissing) {
        return fmt::format("{}: {} is not installed, by which such files are read; install {}",
                           about, program.library, program.package);
    }
    if (end.status > signals) {
        return fmt::format(
            "{}: {} broke down on it (signal {}): it is damaged, or too large for the memory that "
            "is free; copy it again, or save it in another format, as .npy",
            about, program.library, end.status - signals);
    }
    return lastLine(end.errors);
}

// Runs the program with these words.
static void run(const PartProgram& program, std::vector<std::string> words, std::FILE* input,
                std::FILE* output, const std::string& about) {
    if (!Offer::here.parts) {
        throw Failure(
            fmt::format("{}: such files are read and written on 64-bit Linux only; save it in "
                        "another format, as .npy",
                        about));
    }
    const std::filesystem::path file = fileOf(program);
    if (!std::filesystem::is_regular_file(file)) {
        throw Failure(
            fmt::format("{}: fendra was built without {}, by which such files are read; install {} "
                        "and build it again, or save it in another format, as .npy",
                        about, program.library, program.headers));
    }
    words.insert(words.begin(), nameOf(file));
    const ProgramEnd end = runProgram(words, input, output);
    if (end.status != 0) {
        throw Failure(complaint(program, end, about));
    }
}

// A copy that has a name, in the folder for temporary files.
static std::unique_ptr<PartialFile> namedCopy(std::FILE* file) {
    std::error_code ignored;
    auto copy = std::make_unique<PartialFile>(std::filesystem::temp_directory_path(ignored) /
                                              "fendra-input");
    std::vector<char> block(std::size_t{1} << 16);
    std::rewind(file);
    bool isWritten = copy->file != nullptr;
    while (const std::size_t length =
               isWritten ? std::fread(block.data(), 1, block.size(), file) : 0) {
        isWritten = std::fwrite(block.data(), 1, length, copy->file.get()) == length;
    }
    if (!isWritten || std::fflush(copy->file.get()) != 0) {
        throw Failure(
            fmt::format("cannot write a temporary file: {}; make room for it, or name another "
                        "folder in TMPDIR",
                        errorText()));
    }
    return copy;
}

// Runs it on a file of the format. Libraries may open a file by its name alone: one that has none,
// what came through a pipe, is copied.
static void runOnFile(const PartProgram& program, const std::vector<std::string>& words,
                      std::FILE* file, std::FILE* output, const std::string& about) {
    const std::unique_ptr<PartialFile> copy = hasName(file) ? nullptr : namedCopy(file);
    run(program, words, copy != nullptr ? copy->file.get() : file, output, about);
}

static std::string contentsOf(std::FILE* file) {
    std::string text;
    std::rewind(file);
    std::array<char, 4096> block = {};
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), file)) {
        text.append(block.data(), length);
    }
    return text;
}

std::string PartProgram::version(const std::string& about) const {
    const FileHandle nothing = openTemporary(), output = openTemporary();
    run(*this, {"version"}, nothing.get(), output.get(), about);
    return lastLine(contentsOf(output.get()));
}

std::vector<FilePart> PartProgram::parts(std::FILE* file, const SourceName& source) const {
    const FileHandle output = openTemporary();
    runOnFile(*this, {"list", source.shown}, file, output.get(), source.shown);
    std::vector<std::string> texts(1);
    for (const char letter : contentsOf(output.get())) {
        if (letter == '\0') {
            texts.emplace_back();
        } else {
            texts.back() += letter;
        }
    }
    std::vector<FilePart> parts;
    for (std::size_t i = 0; i + 3 < texts.size(); i += 3) {
        parts.push_back({texts[i], texts[i + 1], texts[i + 2]});
    }
    return parts;
}

std::unique_ptr<SignalReader> PartProgram::open(std::FILE* file, const SourceName& source,
                                                const ReadOptions& options) const {
    std::vector<std::string> words = {"read", source.shown, options.part};
    if (options.allowNonfinite) {
        words.emplace_back("--allow-nonfinite");
    }
    if (options.lossy) {
        words.emplace_back("--lossy");
    }
    if (!options.axis.empty()) {
        words.insert(words.end(), {"--axis", options.axis});
    }
    FileHandle output = openTemporary();
    runOnFile(*this, words, file, output.get(), source.shown);
    return std::make_unique<TransferReader>(std::move(output), source);
}

void PartProgram::write(std::FILE* transfer, std::FILE* to, const SourceName& target) const {
    run(*this, {"write", target.shown}, transfer, to, target.shown);
}
