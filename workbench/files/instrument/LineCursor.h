#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// The lines of a file from some byte on, of at most 1 MiB each, whatever ends them: LF, CR LF or
// CR. The file may be read elsewhere in between, so that a file can have several of them.
class LineCursor {
public:
    static constexpr std::size_t defaultBlock = std::size_t{1} << 16;

    // Where a line begins in the file, and its number, counted from 1.
    struct Place {
        std::int64_t position = 0, line = 1;
    };

    // The file stays the caller's; the name is for messages. So many bytes are read at a time.
    LineCursor(std::FILE* opened, std::string displayName, Place from,
               std::size_t blockLength = defaultBlock);

    // Moves line to the next line, without its end, valid until the next call; false at the end of
    // the file. Failure if the line is too long, or the file cannot be read.
    bool next(std::string_view& line);

    // Of the line that comes next.
    [[nodiscard]] Place place() const {
        return {buffered + static_cast<std::int64_t>(begin), lineNumber};
    }

    // Failure about the line that was read last.
    [[noreturn]] void refuse(const std::string& what) const;

private:
    void fill();

    std::FILE* file;
    std::string name;
    std::size_t block;
    std::string buffer;
    std::int64_t buffered;    // where the buffer stands in the file
    std::size_t begin = 0;    // of the line that comes next, in the buffer
    std::int64_t lineNumber;  // of that line
    bool ended = false;       // the buffer reaches to the end of the file
};
