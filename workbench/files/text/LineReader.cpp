#include "workbench/files/text/LineReader.h"

#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

static constexpr std::size_t longestLine = std::size_t{1} << 20;
static constexpr std::size_t blockLength = std::size_t{1} << 16;

LineReader::LineReader(std::FILE* text, std::string displayName, TextOptions textOptions)
    : file(text),
      name(std::move(displayName)),
      options(std::move(textOptions)),
      buffer(blockLength) {}

LineReader::LineReader(std::FILE* pipe, const std::string& head, std::string displayName,
                       TextOptions textOptions)
    : file(pipe),
      name(std::move(displayName)),
      options(std::move(textOptions)),
      buffer(head.begin(), head.end()),
      end(head.size()),
      headLength(head.size()),
      waits(false) {}

static const std::uint8_t* asBytes(const char* text) {
    return reinterpret_cast<const std::uint8_t*>(text);
}

void LineReader::addTo(Sha256& sum) {
    digest = &sum;
    digest->add(asBytes(buffer.data()), headLength);
}

bool LineReader::isData(std::string_view line, const TextOptions& options) {
    if (!line.empty() && (line[0] == '-' || (line[0] >= '0' && line[0] <= '9'))) {
        return line[0] != options.comment;  // most lines
    }
    const std::size_t first = line.find_first_not_of(" \t");
    return first != std::string_view::npos && line[first] != '#' && line[first] != '%' &&
           line[first] != options.comment;
}

bool LineReader::next(std::string_view& line) {
    while (nextRaw(line)) {
        if (lineNumber > options.skip && isData(line, options)) {
            return true;
        }
    }
    return false;
}

void LineReader::rewind() {
    if (waits) {
        std::rewind(file);
    }
    begin = 0;
    end = headLength;
    ended = false;
    lineNumber = 0;
}

bool LineReader::nextRaw(std::string_view& line) {
    ++lineNumber;
    const void* found = nullptr;
    std::size_t searched = 0;
    while (true) {
        found = std::memchr(buffer.data() + begin + searched, lineEnd, end - begin - searched);
        searched = end - begin;
        if (found != nullptr || ended || searched > longestLine) {
            break;
        }
        fill();
    }
    if (found == nullptr && begin == end) {
        return false;
    }
    const char* start = buffer.data() + begin;
    const std::size_t length =
        found == nullptr ? end - begin
                         : static_cast<std::size_t>(static_cast<const char*>(found) - start);
    if (length > longestLine) {
        throw Failure(fmt::format("{}, line {}: longer than 1 MiB; write one line per sample", name,
                                  lineNumber));
    }
    begin += length + (found == nullptr ? 0 : 1);
    line = std::string_view(start, length);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    if (lineNumber == 1 && line.starts_with(byteOrderMark)) {
        line.remove_prefix(byteOrderMark.size());
    }
    return true;
}

// CR if it ends the first line and no LF follows.
static char firstLineEnd(std::string_view text) {
    const std::size_t found = text.find_first_of("\r\n");
    return found < text.size() - 1 && text[found] == '\r' && text[found + 1] != '\n' ? '\r' : '\n';
}

// Appends to what is left in the buffer, which grows with the longest line.
void LineReader::fill() {
    std::memmove(buffer.data(), buffer.data() + begin, end - begin);
    end -= begin;
    begin = 0;
    buffer.resize(std::max(buffer.size(), end + blockLength));
    char* const to = buffer.data() + end;
    if (file == nullptr) {
        ended = true;
        return;
    }
    const std::size_t got =
        waits ? std::fread(to, 1, blockLength, file) : readLine(to, blockLength);
    if (std::ferror(file) != 0) {
        throw Failure(
            fmt::format("cannot read {}: {}; copy it to another place first", name, errorText()));
    }
    if (digest != nullptr) {
        digest->add(asBytes(to), got);
    }
    if (waits && lineNumber == 1 && end == 0) {
        lineEnd = firstLineEnd(std::string_view(to, got));
    }
    end += got;
    ended = waits ? got < blockLength : std::feof(file) != 0;
}

std::size_t LineReader::readLine(char* to, std::size_t most) {
    std::size_t got = 0;
    for (int byte = 0; got < most && byte != '\n'; ++got) {
        byte = std::getc(file);
        if (byte == EOF) {
            break;
        }
        to[got] = static_cast<char>(byte);
    }
    return got;
}
