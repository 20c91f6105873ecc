#include "workbench/parts/mat/MatExtent.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/parts/mat/ElementBytes.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

namespace {

// What stands before the bytes of a data element: its type and size, in two words, or in one of
// which the size is the upper half; then up to four bytes follow at once.
struct Tag {
    std::uint32_t type = 0, size = 0;
    std::optional<std::string> bytes;
};

// What is known of a matrix before its numbers.
struct MatrixHead {
    std::string name;
    bool isNumbers = false;
    std::int64_t elements = 1;  // as its dimensions say, at most 2^32
};

// Where a file has its next variable.
struct Place {
    std::int64_t begin = 0, length = 0;
    bool packed = false;
};

// The variables of a file, one after the other.
class Variables {
public:
    Variables(const std::string& path, const SourceName& source);

    // Null after the last one. Failure if it goes on beyond the end of the file.
    std::optional<Place> next();

    // The bytes of a variable: a matrix.
    [[nodiscard]] ElementBytes bytes(const Place& place) const;
    // Reads the beginning of a matrix; null if it is none.
    std::optional<MatrixHead> head(ElementBytes& bytes) const;
    // Whether the numbers that follow are complete.
    bool hasNumbers(ElementBytes& bytes, const MatrixHead& head) const;

private:
    [[nodiscard]] std::uint32_t word(const char* raw) const;
    std::optional<Tag> tag(ElementBytes& bytes) const;
    std::optional<std::string> field(ElementBytes& bytes) const;

    std::string name;
    FileHandle file;
    std::int64_t length = 0, position = 128;  // after the header
    bool swaps = false;                       // the bytes of a number stand in the other order
};

}  // namespace

static constexpr std::int64_t tagLength = 8;
static constexpr std::uint32_t matrixType = 14, packedType = 15;

static std::uint32_t swapped(std::uint32_t word) {
    return word >> 24U | (word >> 8U & 0xff00U) | (word << 8U & 0xff0000U) | word << 24U;
}

// Bytes of a number as it is stored, which may be fewer than in memory; 0: that type has none.
static std::int64_t storedSize(std::uint32_t type) {
    constexpr std::array<std::int64_t, 14> sizes = {0, 1, 1, 2, 2, 4, 4, 4, 0, 8, 0, 0, 8, 8};
    return type < sizes.size() ? sizes.at(type) : 0;
}

Variables::Variables(const std::string& path, const SourceName& source)
    : name(source.shown), file(openFile(path, "rb")) {
    std::array<char, 2> order = {};
    if (file == nullptr || !seekFile(file.get(), 0, SEEK_END)) {
        throw Failure(fmt::format("{} cannot be read; copy it to another place first", name));
    }
    length = filePosition(file.get());
    seekFile(file.get(), 126, SEEK_SET);
    swaps = std::fread(order.data(), 1, order.size(), file.get()) == 2 && order[0] == 'M';
}

std::uint32_t Variables::word(const char* raw) const {
    std::uint32_t value = 0;
    std::memcpy(&value, raw, sizeof value);
    return swaps ? swapped(value) : value;
}

std::optional<Place> Variables::next() {
    if (position == length) {
        return std::nullopt;
    }
    std::array<char, tagLength> raw = {};
    seekFile(file.get(), position, SEEK_SET);
    const bool hasTag = std::fread(raw.data(), 1, raw.size(), file.get()) == raw.size();
    const bool packed = word(raw.data()) == packedType;
    const std::int64_t size = word(raw.data() + 4);
    if (!hasTag || size > length - position - tagLength) {
        throw Failure(
            fmt::format("{} is truncated: a variable goes on beyond its end; copy it again", name));
    }
    // A packed one begins after its tag, any other one is a matrix with it.
    const Place place{packed ? position + tagLength : position, packed ? size : size + tagLength,
                      packed};
    position += tagLength + size;
    return place;
}

ElementBytes Variables::bytes(const Place& place) const {
    seekFile(file.get(), place.begin, SEEK_SET);
    return {file.get(), place.length, place.packed};
}

std::optional<Tag> Variables::tag(ElementBytes& bytes) const {
    std::array<char, tagLength> raw = {};
    if (!bytes.take(raw.data(), raw.size())) {
        return std::nullopt;
    }
    const std::uint32_t first = word(raw.data()), size = first >> 16U;
    if (size == 0) {
        return Tag{first, word(raw.data() + 4), std::nullopt};
    }
    return Tag{first & 0xffffU, size, std::string(raw.data() + 4, std::min(size, 4U))};
}

// The bytes of a short element.
std::optional<std::string> Variables::field(ElementBytes& bytes) const {
    constexpr std::uint32_t longest = 1 << 16;
    const std::optional<Tag> head = tag(bytes);
    if (!head || head->bytes || head->size > longest) {
        return head ? head->bytes : std::nullopt;
    }
    std::string text((std::size_t{head->size} + 7) / 8 * 8, '\0');  // whole words of 64 bits
    if (!bytes.take(text.data(), text.size())) {
        return std::nullopt;
    }
    text.resize(head->size);
    return text;
}

std::optional<MatrixHead> Variables::head(ElementBytes& bytes) const {
    const std::optional<Tag> matrix = tag(bytes);
    if (!matrix || matrix->type != matrixType) {
        return std::nullopt;
    }
    const std::optional<std::string> flags = field(bytes), dimensions = field(bytes),
                                     given = field(bytes);
    if (!flags || flags->size() < 4 || !dimensions || !given) {
        return std::nullopt;
    }
    constexpr std::uint32_t firstNumbers = 6, lastNumbers = 15;  // of the classes
    constexpr std::int64_t most = std::int64_t{1} << 32U;
    const std::uint32_t kind = word(flags->data()) & 0xffU;
    MatrixHead head{*given, kind >= firstNumbers && kind <= lastNumbers};
    for (std::size_t i = 0; i + 4 <= dimensions->size(); i += 4) {
        const std::int64_t count = word(dimensions->data() + i);
        head.elements = std::min(head.elements, most / std::max<std::int64_t>(1, count)) * count;
    }
    return head;
}

bool Variables::hasNumbers(ElementBytes& bytes, const MatrixHead& head) const {
    const std::optional<Tag> numbers = tag(bytes);
    return numbers && storedSize(numbers->type) * head.elements == numbers->size &&
           (numbers->bytes || bytes.skip(numbers->size)) && bytes.endsWell();
}

void requireVariables(const std::string& path, const SourceName& file) {
    for (Variables variables(path, file); variables.next();) {
    }
}

// Whether a variable of that name is there, and has all its numbers, if it is of numbers.
static bool isWhole(Variables& variables, const std::string& variable) {
    while (const std::optional<Place> place = variables.next()) {
        ElementBytes bytes = variables.bytes(*place);
        const std::optional<MatrixHead> head = variables.head(bytes);
        if (head && head->name == variable) {
            return !head->isNumbers || variables.hasNumbers(bytes, *head);
        }
    }
    return false;
}

void requireNumbers(const std::string& path, const std::string& variable,
                    const SourceName& source) {
    Variables variables(path, source);
    if (!isWhole(variables, variable)) {
        throw Failure(
            fmt::format("{}: {} is damaged: its values are not as many as its dimensions "
                        "say; copy the file again",
                        source.shown, printable(variable, 100)));
    }
}
