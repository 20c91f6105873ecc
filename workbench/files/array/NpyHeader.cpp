#include "workbench/files/array/NpyHeader.h"

#include "workbench/files/array/SampleType.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

static constexpr std::int64_t longestText = std::int64_t{1} << 16;

namespace {

// Thrown where the text is not that of a header.
struct Malformed {};

// Takes a literal of Python apart.
class Literal {
public:
    explicit Literal(std::string_view text) : rest(text) {}

    // Takes the letter after blanks, if it comes next.
    bool takes(char letter) {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
        if (!rest.starts_with(letter)) {
            return false;
        }
        rest.remove_prefix(1);
        return true;
    }

    void require(char letter) {
        if (!takes(letter)) {
            throw Malformed();
        }
    }

    std::string_view string() {
        const char quote = takes('"') ? '"' : '\'';
        if (quote == '\'') {
            require(quote);
        }
        const std::size_t end = rest.find(quote);
        if (end == std::string_view::npos) {
            throw Malformed();
        }
        const std::string_view word = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        return word;
    }

    bool truth() {
        takes(' ');
        for (const std::string_view word : {"True", "False"}) {
            if (rest.starts_with(word)) {
                rest.remove_prefix(word.size());
                return word == "True";
            }
        }
        throw Malformed();
    }

    // A number beyond 63 bits counts as the largest of them. Old files have an L after it.
    std::int64_t number() {
        takes(' ');
        std::int64_t value = 0;
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        if (error == std::errc::result_out_of_range) {
            value = std::numeric_limits<std::int64_t>::max();
        }
        if (end == rest.data() || value < 0) {
            throw Malformed();
        }
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        takes('L');
        return value;
    }

    std::vector<std::int64_t> tuple() {
        std::vector<std::int64_t> numbers;
        require('(');
        while (!takes(')')) {
            numbers.push_back(number());
            if (!takes(',')) {
                require(')');
                break;
            }
        }
        return numbers;
    }

private:
    std::string_view rest;
};

// Values that are not samples, and what to save in their place.
struct Refused {
    std::string_view kinds;
    const char* what;
    const char* instead;
};

// What a header says, as it stands there.
struct Fields {
    std::optional<std::string> type;
    std::optional<bool> byColumns;
    std::optional<std::vector<std::int64_t>> shape;
};

}  // namespace

static constexpr std::array refusedKinds = {
    Refused{"c", "complex numbers", "the real part, the imaginary part or the magnitude"},
    Refused{"f", "long double numbers", "them as float64"},
    Refused{"O", "Python objects", "an array of numbers"},
    Refused{"SUa", "text", "an array of numbers"},
    Refused{"V", "structured records", "one of their fields as an array"},
    Refused{"mM", "dates or times", "them as numbers of seconds"}};

[[noreturn]] static void refuseKind(char kind, const std::string& name) {
    const auto* row = std::find_if(refusedKinds.begin(), refusedKinds.end(), [kind](const auto& r) {
        return r.kinds.find(kind) != std::string_view::npos;
    });
    if (row == refusedKinds.end()) {
        throw Malformed();
    }
    throw Failure(
        fmt::format("{} holds {}, which are not samples; save {}", name, row->what, row->instead));
}

// "<f8": order of the bytes, kind, and bytes of a value.
static void setType(NpyHeader& header, std::string_view type, const std::string& name) {
    if (!type.empty() && std::string_view("<>=|").find(type.front()) != std::string_view::npos) {
        header.bigEndian = type.front() == '>';
        type.remove_prefix(1);
    }
    header.kind = type.empty() ? ' ' : type.front() == '?' ? 'b' : type.front();
    const std::string_view digits =
        type == "?" ? "1" : type.substr(std::min<std::size_t>(1, type.size()));
    header.bytes = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), header.bytes);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    if (!whole || SampleType::of(header.kind, header.bytes, header.bigEndian) == nullptr) {
        refuseKind(header.kind, name);
    }
}

static Fields fieldsOf(std::string_view text, const std::string& name) {
    Fields fields;
    Literal literal(text);
    literal.require('{');
    while (!literal.takes('}')) {
        const std::string_view key = literal.string();
        literal.require(':');
        if (key == "descr") {
            if (literal.takes('[') || literal.takes('(')) {
                refuseKind('V', name);
            }
            fields.type = literal.string();
        } else if (key == "fortran_order") {
            fields.byColumns = literal.truth();
        } else if (key == "shape") {
            fields.shape = literal.tuple();
        } else {
            throw Malformed();
        }
        if (!literal.takes(',')) {
            literal.require('}');
            break;
        }
    }
    if (!fields.type || !fields.byColumns || !fields.shape) {
        throw Malformed();
    }
    return fields;
}

static void setShape(NpyHeader& header, const std::vector<std::int64_t>& shape,
                     const std::string& name) {
    if (shape.empty()) {
        throw Failure(
            fmt::format("{} holds a single number, of 0 dimensions; save a row of samples", name));
    }
    if (shape.size() > 2) {
        throw Failure(
            fmt::format("{} has {} dimensions, {}; save two of them, samples and channels", name,
                        shape.size(), fmt::join(shape, " x ")));
    }
    header.rows = shape[0];
    header.columns = shape.size() == 2 ? shape[1] : 1;
    if (header.rows == 0 || header.columns == 0) {
        throw Failure(fmt::format("{} holds no samples; choose another file", name));
    }
    if (header.rows == 1) {
        std::swap(header.rows, header.columns);
    }
}

static void checkExtent(const NpyHeader& header, std::int64_t present, const std::string& name) {
    if (header.columns > present / header.bytes / header.rows) {
        throw Failure(fmt::format(
            "{} is truncated: its header declares {} values of {} byte{}, but only {} "
            "bytes of samples are present; copy it again",
            name, header.shapeName(), header.bytes, header.bytes == 1 ? "" : "s", present));
    }
    if (header.columns > std::numeric_limits<int>::max()) {
        throw Failure(fmt::format("{} has {} columns, which are channels; transpose it", name,
                                  header.columns));
    }
}

// Where the text of a header begins, and how long it is.
struct TextPlace {
    std::int64_t begin = 0, length = 0;
};

static TextPlace findText(const NpyHeader::ReadBytes& next, const std::string& name) {
    std::array<char, 12> head = {};
    constexpr std::size_t common = 8;
    if (next(head.data(), common) < common ||
        std::string_view(head.data(), head.size()).substr(0, NpyHeader::mark.size()) !=
            NpyHeader::mark) {
        throw Malformed();
    }
    const int version = static_cast<unsigned char>(head[6]);
    if (version < 1 || version > 3) {
        throw Failure(
            fmt::format("{} is .npy of version {}, which is not known; save it as version 1, "
                        "2 or 3",
                        name, version));
    }
    const std::size_t digits = version == 1 ? 2 : 4;
    if (next(head.data() + common, digits) < digits) {
        throw Malformed();
    }
    TextPlace place{static_cast<std::int64_t>(common + digits), 0};
    for (std::size_t i = digits; i-- > 0;) {
        place.length = place.length * 256 + static_cast<unsigned char>(head[common + i]);
    }
    return place;
}

NpyHeader NpyHeader::read(const ReadBytes& next, std::int64_t available, const std::string& name) {
    try {
        NpyHeader header;
        const TextPlace place = findText(next, name);
        header.length = place.begin + place.length;
        if (place.length > longestText || header.length > available) {
            throw Malformed();
        }
        std::string text(static_cast<std::size_t>(place.length), ' ');
        if (next(text.data(), text.size()) < text.size()) {
            throw Malformed();
        }
        const Fields fields = fieldsOf(text, name);
        setType(header, *fields.type, name);
        header.byColumns = *fields.byColumns;
        setShape(header, *fields.shape, name);
        checkExtent(header, available - header.length, name);
        return header;
    } catch (const Malformed&) {
        throw Failure(
            fmt::format("{}: the header of the array cannot be read; save it again", name));
    }
}

std::string NpyHeader::typeName() const {
    if (kind == 'b') {
        return "truth value";
    }
    return fmt::format("{}-bit {}", 8 * bytes,
                       kind == 'f'   ? "float"
                       : kind == 'i' ? "integer"
                                     : "integer without sign");
}

std::string NpyHeader::shapeName() const {
    return columns == 1 ? fmt::format("{}", rows) : fmt::format("{} x {}", rows, columns);
}
