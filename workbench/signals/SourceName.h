#pragma once

#include <string>

// The name of a file of a signal, as it was given and as messages show it.
struct SourceName {
    SourceName() = default;

    // Of a file that is read; path "-" is standard input.
    explicit SourceName(std::string path);

    // Of a file that is written; path "-" is standard output.
    static SourceName ofOutput(std::string path);

    [[nodiscard]] bool isStandardStream() const { return path == "-"; }

    // For records that programs read: the path to the letter, or the words for a standard stream.
    [[nodiscard]] const std::string& recorded() const { return isStandardStream() ? shown : path; }

    std::string path;
    std::string shown;  // printable, on one line; "standard input" or "standard output" for "-"
};
