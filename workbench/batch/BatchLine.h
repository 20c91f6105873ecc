#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What became of a file of a batch: a line of its manifest.
struct BatchLine {
    struct Input {
        std::string file, sha256;  // of its bytes
    };
    struct Result {
        std::string file;
        std::string sha256;  // of the samples, as a record has it
        // Of the bytes of the file, where samples read from it are not those that were written:
        // its encoding is narrower. Else empty.
        std::string stored;
        int columns = 1;            // of samples, interleaved
        std::int64_t bytes = 0;     // of the file
        std::int64_t modified = 0;  // ticks of the file system's clock
    };

    std::string name;  // of the result, below the folder
    std::vector<Input> inputs;
    std::optional<Result> result;  // none: it failed
    std::string settings = "{}";   // a JSON object
    double seconds = 0.0;
    std::vector<std::string> warnings;
    std::string rerun;  // the command line with what was found in this file; empty: nothing was
    std::string error;  // empty: none

    // One line of JSON. Where the file was done there is no error, else no result.
    [[nodiscard]] std::string text() const;
    // None if the text is not such a line, as where it was torn.
    static std::optional<BatchLine> of(std::string_view text);

    // Whether both were to do the same to the same input.
    [[nodiscard]] bool asksTheSame(const BatchLine& other) const;
};
