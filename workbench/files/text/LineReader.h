#pragma once

#include "workbench/signals/TextOptions.h"
#include "workbench/system/Sha256.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// The lines of a text file, of at most 1 MiB each, without empty lines, comment lines (after #, %
// or what the options name), those that the options skip, line ends (LF, CR LF, or CR where the
// first is one) and the byte-order mark of UTF-8.
class LineReader {
public:
    static constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

    // The file stays the caller's; the name is for messages.
    LineReader(std::FILE* text, std::string displayName, TextOptions textOptions);

    // The lines of a pipe, each as soon as it has come, after those of its head, which were read
    // from it before and end with a line. rewind works as long as no line beyond the head was asked
    // for. pipe: null for the head alone.
    LineReader(std::FILE* pipe, const std::string& head, std::string displayName,
               TextOptions textOptions);

    // Moves line to the next line, valid until the next call; false at the end. Failure if the line
    // is too long, or the file cannot be read.
    bool next(std::string_view& line);

    // Whether a line, without its end, is neither empty nor comment.
    static bool isData(std::string_view line, const TextOptions& options);

    // Adds the bytes of a pipe, from the first of its head on, to a sum that outlives the reader.
    void addTo(Sha256& sum);

    // Of the line that was read last, counted from 1.
    std::int64_t number() const { return lineNumber; }

    // Back to the first line.
    void rewind();

private:
    bool nextRaw(std::string_view& line);
    void fill();
    std::size_t readLine(char* to, std::size_t most);

    std::FILE* file;
    std::string name;
    Sha256* digest = nullptr;
    TextOptions options;
    char lineEnd = '\n';
    std::vector<char> buffer;
    std::size_t begin = 0, end = 0;  // what of the buffer is still to be read
    std::size_t headLength = 0;
    bool waits = true;  // for a whole block; false: lines come one by one
    bool ended = false;
    std::int64_t lineNumber = 0;
};
