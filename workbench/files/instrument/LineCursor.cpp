#include "workbench/files/instrument/LineCursor.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <utility>

static constexpr std::size_t longest = std::size_t{1} << 20;

LineCursor::LineCursor(std::FILE* opened, std::string displayName, Place from,
                       std::size_t blockLength)
    : file(opened),
      name(std::move(displayName)),
      block(blockLength),
      buffered(from.position),
      lineNumber(from.line) {}

// Moves what is left to the front of the buffer and adds a block.
void LineCursor::fill() {
    buffer.erase(0, begin);
    buffered += static_cast<std::int64_t>(begin);
    begin = 0;
    const std::size_t before = buffer.size();
    buffer.resize(before + block);
    std::size_t got = 0;
    if (seekFile(file, buffered + static_cast<std::int64_t>(before), SEEK_SET)) {
        got = std::fread(buffer.data() + before, 1, block, file);
    }
    if (std::ferror(file) != 0) {
        throw Failure(fmt::format("cannot read {}; copy it to another place first", name));
    }
    buffer.resize(before + got);
    ended = got < block;
}

// A CR at the end of the buffer may be the first half of an end of line.
bool LineCursor::next(std::string_view& line) {
    std::size_t end = buffer.find_first_of("\r\n", begin);
    while (!ended && (end == std::string::npos || end + 1 == buffer.size())) {
        if (buffer.size() - begin > longest) {
            ++lineNumber;
            refuse("the line is too long; this is not a file of that format");
        }
        fill();
        end = buffer.find_first_of("\r\n", begin);
    }
    if (begin == buffer.size()) {
        return false;
    }
    const bool last = end == std::string::npos;
    line = std::string_view(buffer).substr(begin, last ? std::string_view::npos : end - begin);
    const bool pair = !last && buffer.compare(end, 2, "\r\n") == 0;
    begin = last ? buffer.size() : end + (pair ? 2 : 1);
    ++lineNumber;
    return true;
}

void LineCursor::refuse(const std::string& what) const {
    throw Failure(fmt::format("{}, line {}: {}", name, lineNumber - 1, what));
}
