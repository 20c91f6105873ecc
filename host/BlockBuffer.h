#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <streambuf>

// Bytes in the order of their writing, all in memory, in chunks: each chunk is freed once it has
// been read. There are no get and put areas, so every access ends in a virtual function below; the
// bulk ones copy whole runs.
class BlockBuffer : public std::streambuf {
public:
    // Number of bytes that wait.
    std::uint64_t size() const { return writePosition - readPosition; }

    // Makes room for count more bytes, so that writing them cannot fail. Memory that runs out
    // leaves by std::bad_alloc, with the buffer as it was.
    void reserve(std::uint64_t count);

    // Writes count bytes after the last one, all of them: memory that runs out leaves by
    // std::bad_alloc, with the buffer as it was.
    void append(const void* bytes, std::uint64_t count);

    // Copies count bytes that start offset bytes after the next one, without taking them.
    // offset + count is at most size().
    void copy(std::uint64_t offset, void* bytes, std::uint64_t count) const;

    // Removes the next count bytes, at most size(), unread.
    void drop(std::uint64_t count);

protected:
    int_type underflow() override;
    int_type uflow() override;
    std::streamsize showmanyc() override;
    std::streamsize xsgetn(char* bytes, std::streamsize count) override;
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;

private:
    std::uint64_t capacity() const;
    char* at(std::uint64_t position) const;
    void releaseSpareChunks();

    std::deque<std::unique_ptr<char[]>> chunks;
    std::uint64_t readPosition = 0;   // from the start of the first chunk, within which it lies
    std::uint64_t writePosition = 0;  // likewise from there
};
