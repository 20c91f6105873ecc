#include "workbench/parts/netcdf/ClassicExtent.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace {

// Thrown where the bytes are not those of a header.
struct Malformed {};

// What the header says of a variable.
struct ClassicVariable {
    std::vector<std::uint64_t> dimensions;
    std::uint64_t type = 0;
    std::uint64_t begin = 0;
};

constexpr std::uint64_t mostBytes = std::numeric_limits<std::uint64_t>::max();

}  // namespace

// Clipped to the largest number that there is.
static std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > mostBytes / b ? mostBytes : a * b;
}

static std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
    return a > mostBytes - b ? mostBytes : a + b;
}

static std::uint64_t padded(std::uint64_t bytes) {
    return sum(bytes, 3) / 4 * 4;
}

namespace {

// The header, read from its first byte to its last.
class ClassicHeader {
public:
    ClassicHeader(FileHandle opened, std::uint64_t fileLength)
        : file(std::move(opened)), length(fileLength) {
        std::array<unsigned char, 4> mark = {};
        readBytes(mark.data(), mark.size());
        version = mark[3];
        records = count();
        readDimensions();
        skipAttributes();
        readVariables();
    }

    // The length that the file has to have.
    [[nodiscard]] std::uint64_t needed() const {
        std::uint64_t end = position, record = 0;
        const auto many = std::count_if(variables.begin(), variables.end(),
                                        [this](const auto& each) { return isRecord(each); });
        for (const ClassicVariable& variable : variables) {
            if (isRecord(variable)) {  // a single one is not padded
                record = sum(record, many == 1 ? bytesOf(variable) : padded(bytesOf(variable)));
            }
        }
        for (const ClassicVariable& variable : variables) {
            if (!isRecord(variable)) {
                end = std::max(end, sum(variable.begin, bytesOf(variable)));
            } else if (records > 0) {
                end = std::max(
                    end, sum(sum(variable.begin, product(records - 1, record)), bytesOf(variable)));
            }
        }
        return end;
    }

private:
    static constexpr std::uint64_t dimensionTag = 10, variableTag = 11, attributeTag = 12;
    static constexpr std::array<std::uint64_t, 12> sizes = {0, 1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};

    void readBytes(unsigned char* to, std::size_t size) {
        if (std::fread(to, 1, size, file.get()) < size) {
            throw Malformed();
        }
        position += size;
    }

    std::uint64_t number(std::size_t size) {
        std::array<unsigned char, 8> bytes = {};
        readBytes(bytes.data(), size);
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            value = value << 8U | bytes.at(i);
        }
        return value;
    }

    // A number of things, or the index of one.
    std::uint64_t count() { return number(version == 5 ? 8 : 4); }

    void skip(std::uint64_t bytes) {
        if (bytes > length - std::min(length, position) ||
            !seekFile(file.get(), static_cast<std::int64_t>(position + bytes), SEEK_SET)) {
            throw Malformed();
        }
        position += bytes;
    }

    void skipName() { skip(padded(count())); }

    static std::uint64_t sizeOf(std::uint64_t type) {
        if (type == 0 || type >= sizes.size()) {
            throw Malformed();
        }
        return sizes.at(type);
    }

    // The number of entries of a list, each of which takes bytes of the file.
    std::uint64_t entries(std::uint64_t tag) {
        const std::uint64_t given = number(4), all = count();
        if ((given != tag && (given != 0 || all != 0)) || all > length / 8) {
            throw Malformed();
        }
        return all;
    }

    void readDimensions() {
        for (std::uint64_t left = entries(dimensionTag); left > 0; --left) {
            skipName();
            dimensions.push_back(count());
        }
    }

    void skipAttributes() {
        for (std::uint64_t left = entries(attributeTag); left > 0; --left) {
            skipName();
            const std::uint64_t size = sizeOf(number(4));
            skip(padded(product(count(), size)));
        }
    }

    void readVariables() {
        for (std::uint64_t left = entries(variableTag); left > 0; --left) {
            skipName();
            ClassicVariable variable;
            for (std::uint64_t more = count(); more > 0; --more) {
                variable.dimensions.push_back(count());
                if (variable.dimensions.back() >= dimensions.size()) {
                    throw Malformed();
                }
            }
            skipAttributes();
            variable.type = number(4);
            count();  // its size, which follows from the rest
            variable.begin = number(version == 1 ? 4 : 8);
            variables.push_back(variable);
        }
    }

    // Along the dimension of length 0, which is the first then, the variables alternate.
    [[nodiscard]] bool isRecord(const ClassicVariable& variable) const {
        return !variable.dimensions.empty() && dimensions[variable.dimensions[0]] == 0;
    }

    // Of a variable, or of a record of it.
    [[nodiscard]] std::uint64_t bytesOf(const ClassicVariable& variable) const {
        std::uint64_t bytes = sizeOf(variable.type);
        for (std::size_t i = isRecord(variable) ? 1 : 0; i < variable.dimensions.size(); ++i) {
            bytes = product(bytes, dimensions[variable.dimensions[i]]);
        }
        return bytes;
    }

    FileHandle file;
    std::uint64_t length, position = 0;
    unsigned version = 0;
    std::uint64_t records = 0;
    std::vector<std::uint64_t> dimensions;
    std::vector<ClassicVariable> variables;
};

}  // namespace

void checkExtent(const std::string& path, const SourceName& source) {
    FileHandle file = openFile(path, "rb");
    if (file == nullptr || !seekFile(file.get(), 0, SEEK_END)) {
        throw Failure(
            fmt::format("cannot open {}; check the name and the right to read it", source.shown));
    }
    const auto length = static_cast<std::uint64_t>(filePosition(file.get()));
    seekFile(file.get(), 0, SEEK_SET);
    try {
        const std::uint64_t needed = ClassicHeader(std::move(file), length).needed();
        if (needed > length) {
            throw Failure(
                fmt::format("{} is truncated: its header declares {} bytes, but it has "
                            "{}; copy it again",
                            source.shown, needed, length));
        }
    } catch (const Malformed&) {
        throw Failure(fmt::format("{}: the header of the NetCDF file cannot be read; copy it again",
                                  source.shown));
    }
}
