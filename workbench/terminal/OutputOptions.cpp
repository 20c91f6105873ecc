#include "workbench/terminal/OutputOptions.h"

#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>

#include <vector>

static std::vector<std::string> encodingWords() {
    std::vector<std::string> words;
    for (const EncodingRow& row : EncodingRow::all()) {
        words.emplace_back(row.word);
    }
    return words;
}

void OutputOptions::addTo(CLI::App& command, const char* about) {
    command.add_option("-o,--output", file, about)->type_name("FILE")->group("Result");
    addWithoutFileTo(command);
}

void OutputOptions::addWithoutFileTo(CLI::App& command) {
    command.add_flag("--force", replace, forceText)->group("Result");
    command
        .add_option(
            "--encoding", encoding,
            "samples of an output that is audio or, if they are floats, npy; auto is float64, for "
            "FLAC pcm24")
        ->check(choice(encodingWords()))
        ->type_name("")
        ->capture_default_str()
        ->group("Result");
    command
        .add_flag(
            "--dither", dither,
            "add triangular noise of one last bit before samples are rounded to an integer "
            "encoding, so that what is below a bit survives; the same noise in every run. The "
            "digest is that of the samples before it")
        ->group("Result");
    command.add_flag("-q,--quiet", quiet, "print nothing about the run, except errors")
        ->group("Result");
}

SignalTarget OutputOptions::target() const {
    return {SourceName::ofOutput(file), replace, EncodingRow::named(encoding)->encoding, dither};
}

std::string OutputOptions::words() const {
    return (encoding == "auto" ? "" : " --encoding " + encoding) + (dither ? " --dither" : "") +
           (file == "-" ? "" : " -o " + quoted(file));
}

std::string quoted(const std::string& word) {
    const bool plain = !word.empty() && word.find_first_not_of(
                                            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOP"
                                            "QRSTUVWXYZ0123456789_./,:=+-") == std::string::npos;
    if (plain) {
        return word;
    }
    std::string text = "'";
    for (const char c : word) {
        text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return text + "'";
}
