#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// The lines of a text file, of at most 1 MiB each, without empty lines, comment lines, line ends
// (LF or CR LF) and the byte-order mark of UTF-8.
class LineReader {
public:
    // The file stays the caller's; the name is for messages.
    LineReader(std::FILE* text, std::string displayName);

    // Moves line to the next line, valid until the next call; false at the end. Failure if the line
    // is too long, or the file cannot be read.
    bool next(std::string_view& line);

    // Of the line that was read last, counted from 1.
    std::int64_t number() const { return lineNumber; }

    // Back to the first line.
    void rewind();

private:
    bool nextRaw(std::string_view& line);
    void fill();

    std::FILE* file;
    std::string name;
    std::vector<char> buffer;
    std::size_t begin = 0, end = 0;  // what of the buffer is still to be read
    bool ended = false;
    std::int64_t lineNumber = 0;
};
