#include "workbench/files/instrument/SacHeader.h"

#include "workbench/files/array/SampleType.h"
#include "workbench/files/instrument/fields.h"
#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

static_assert(std::endian::native == std::endian::little,
              "numbers are written as they are in memory");

static constexpr double undefined = -12345.0;
static constexpr std::size_t floatCount = 70, integerCount = 40, doubleCount = 22;
static constexpr std::size_t nameLength = 8;

// Places among the floats and the doubles, among the integers, and of letters in the header.
enum FloatPlace : std::size_t {
    deltaAt = 0,
    smallestAt = 1,
    largestAt = 2,
    beginAt = 5,
    endAt = 6
};
static constexpr std::size_t meanAt = 56;
enum DoublePlace : std::size_t { exactDelta = 0, exactBegin = 1, exactEnd = 2 };
enum IntegerPlace : std::size_t {
    versionAt = 6,
    countAt = 9,
    typeAt = 15,
    quantityAt = 16,
    zeroTimeAt = 17,
    evenAt = 35,
    writableAt = 37,
    lastAt = 39
};
static constexpr std::size_t lettersAt = 440, stationAt = 440, componentAt = 600;

static constexpr std::size_t byteOf(std::size_t integer) {
    return 4 * (floatCount + integer);
}

namespace {

// The units that the format has a number for.
struct Quantity {
    std::int32_t number;
    const char* unit;
};

// The types of files that are no time series.
struct Other {
    std::int32_t type;
    const char* what;
};

}  // namespace

static constexpr std::int32_t timeSeries = 1, unknownQuantity = 5, zeroIsBegin = 9;
static constexpr std::array quantities = {Quantity{6, "nm"}, Quantity{7, "nm/s"},
                                          Quantity{8, "nm/s^2"}, Quantity{50, "V"}};
static constexpr std::array otherTypes = {Other{2, "a spectrum, of real and imaginary parts"},
                                          Other{3, "a spectrum, of amplitudes and phases"},
                                          Other{4, "a curve, of pairs of x and y"},
                                          Other{51, "a surface over x and y"}};

// A byte that no 32-bit number from 0 to 127 has elsewhere.
static int smallNumber(std::string_view bytes, std::size_t place, bool bigEndian) {
    const std::string_view word = bytes.substr(place, 4);
    const std::size_t low = bigEndian ? 3 : 0;
    for (std::size_t i = 0; i < 4; ++i) {
        if (i != low && word[i] != '\0') {
            return -1;
        }
    }
    return word[low];
}

static bool isHeader(std::string_view head, bool bigEndian) {
    const int version = smallNumber(head, byteOf(versionAt), bigEndian);
    const int type = smallNumber(head, byteOf(typeAt), bigEndian);
    const int even = smallNumber(head, byteOf(evenAt), bigEndian);
    return (version == 6 || version == 7) && (even == 0 || even == 1) &&
           (type == timeSeries ||
            std::any_of(otherTypes.begin(), otherTypes.end(),
                        [type](const Other& each) { return each.type == type; }));
}

bool SacHeader::recognises(std::string_view head) {
    return head.size() >= byteOf(evenAt) + 4 && (isHeader(head, false) || isHeader(head, true));
}

// A name of letters, which may be undefined.
static std::string nameIn(std::string_view header, std::size_t place) {
    std::string_view text = header.substr(place, nameLength);
    text = text.substr(0, text.find('\0'));
    text = field(text, 0, nameLength);
    return text == "-12345" ? "" : printable(text);
}

static std::string joined(const std::string& station, const std::string& component,
                          double quantity) {
    const auto* const row =
        std::find_if(quantities.begin(), quantities.end(),
                     [quantity](const Quantity& each) { return each.number == quantity; });
    const std::string unit = row == quantities.end() ? "" : row->unit;
    const bool both = !station.empty() && !component.empty();
    const std::string name = station + (both ? "." : "") + component;
    return withUnit(name.empty() && !unit.empty() ? "signal" : name, unit);
}

namespace {

// A name of a channel as the header has it.
struct NameParts {
    explicit NameParts(const std::string& name) {
        const NameAndUnit words = splitUnit(name);
        const auto* const row =
            std::find_if(quantities.begin(), quantities.end(),
                         [&words](const Quantity& each) { return each.unit == words.unit; });
        quantity = row == quantities.end() ? unknownQuantity : row->number;
        const std::size_t point = words.name.rfind('.');
        station = words.name.substr(0, point);
        component = point == std::string::npos ? "" : words.name.substr(point + 1);
    }

    [[nodiscard]] bool gives(const std::string& name) const {
        return station.size() <= nameLength && component.size() <= nameLength &&
               joined(station, component, quantity) == name && name.find("-12345") != 0;
    }

    std::string station, component;
    std::int32_t quantity;
};

}  // namespace

bool SacHeader::holdsName(const std::string& name) {
    return NameParts(name).gives(name);
}

// The number of fewest digits that is that float: 0.1 rather than 0.10000000149011612.
static double roundest(double value) {
    const auto narrow = static_cast<float>(value);
    std::array<char, 32> text = {};
    const std::to_chars_result end = std::to_chars(text.begin(), text.end(), narrow);
    double wide = value;
    std::from_chars(text.data(), end.ptr, wide);
    return wide;
}

// Within half a unit of the last bit that the file has of it.
template <typename Number>
static void setSteps(SacHeader& header, Number step) {
    const Number below = std::nextafter(step, Number{0});
    const Number above = std::nextafter(step, std::numeric_limits<Number>::infinity());
    header.lowestStep = 0.5 * static_cast<double>(step) + 0.5 * static_cast<double>(below);
    header.highestStep = 0.5 * static_cast<double>(step) + 0.5 * static_cast<double>(above);
}

// Doubles win where they are defined.
void SacHeader::readTimes(std::FILE* file, const double* floats) {
    step = floats[deltaAt];
    setSteps(*this, static_cast<float>(step));
    start = floats[beginAt] == undefined ? 0.0 : roundest(floats[beginAt]);
    std::array<std::uint8_t, footerLength> raw = {};
    std::array<double, doubleCount> doubles = {};
    if (version == 7 && seekFile(file, length + 4 * samples, SEEK_SET) &&
        std::fread(raw.data(), 1, raw.size(), file) == raw.size()) {
        SampleType::of('f', 8, bigEndian)->decode(raw.data(), doubleCount, doubles.data());
        if (doubles[exactDelta] != undefined) {
            step = doubles[exactDelta];
            setSteps(*this, step);
        }
        start = doubles[exactBegin] == undefined ? start : doubles[exactBegin];
    }
}

static void refuseOthers(const std::string& name, const double* integers) {
    const auto* const other =
        std::find_if(otherTypes.begin(), otherTypes.end(),
                     [integers](const Other& each) { return each.type == integers[typeAt]; });
    if (other != otherTypes.end()) {
        throw Failure(fmt::format("{} holds {}, which is not a time series; save it as one", name,
                                  other->what));
    }
    if (integers[evenAt] == 0) {
        throw Failure(fmt::format("{} is not evenly spaced; resample it", name));
    }
    if (!(integers[countAt] > 0)) {
        throw Failure(fmt::format("{} holds no samples; choose another file", name));
    }
}

static void checkExtent(const SacHeader& header, std::FILE* file, const std::string& name) {
    seekFile(file, 0, SEEK_END);
    const std::int64_t present = filePosition(file);
    const std::int64_t declared = SacHeader::length + 4 * header.samples +
                                  (header.version == 7 ? SacHeader::footerLength : 0);
    if (present < declared) {
        throw Failure(
            fmt::format("{} is truncated: its header declares {} samples, which take {} bytes, but "
                        "only {} are present; copy it again",
                        name, header.samples, declared, present));
    }
    if (present > declared) {
        throw Failure(
            fmt::format("{} is {} bytes long, but {} samples, which its header declares, take {}; "
                        "save it again",
                        name, present, header.samples, declared));
    }
}

SacHeader SacHeader::read(std::FILE* file, const std::string& name) {
    std::array<std::uint8_t, length> raw = {};
    if (!seekFile(file, 0, SEEK_SET) || std::fread(raw.data(), 1, raw.size(), file) < raw.size()) {
        throw Failure(
            fmt::format("{} is truncated: its header has {} bytes; copy it again", name, length));
    }
    const std::string_view bytes(reinterpret_cast<const char*>(raw.data()), raw.size());
    SacHeader header;
    header.bigEndian = !isHeader(bytes, false);
    std::array<double, floatCount> floats = {};
    std::array<double, integerCount> integers = {};
    SampleType::of('f', 4, header.bigEndian)->decode(raw.data(), floatCount, floats.data());
    SampleType::of('i', 4, header.bigEndian)
        ->decode(raw.data() + byteOf(0), integerCount, integers.data());
    refuseOthers(name, integers.data());
    header.version = static_cast<int>(integers[versionAt]);
    header.samples = static_cast<std::int64_t>(integers[countAt]);
    checkExtent(header, file, name);
    header.readTimes(file, floats.data());
    if (!std::isfinite(header.step) || !(header.step > 0.0) || !std::isfinite(header.start)) {
        throw Failure(
            fmt::format("{}: {} s from {} s on is not a spacing of times; correct DELTA "
                        "and B in its header",
                        name, header.step, header.start));
    }
    header.name =
        joined(nameIn(bytes, stationAt), nameIn(bytes, componentAt), integers[quantityAt]);
    return header;
}

template <typename Values>
static std::string bytesOf(const Values& values) {
    return {reinterpret_cast<const char*>(values.data()), sizeof(values[0]) * values.size()};
}

std::string SacHeader::headerBytes(const Range& range) const {
    std::array<float, floatCount> floats = {};
    floats.fill(static_cast<float>(undefined));
    floats[deltaAt] = static_cast<float>(step);
    floats[smallestAt] = static_cast<float>(range.smallest);
    floats[largestAt] = static_cast<float>(range.largest);
    floats[meanAt] = static_cast<float>(range.mean);
    floats[beginAt] = static_cast<float>(start);
    floats[endAt] = static_cast<float>(start + static_cast<double>(samples - 1) * step);
    const NameParts parts(holdsName(name) ? name : "");
    std::array<std::int32_t, integerCount> integers = {};
    integers.fill(static_cast<std::int32_t>(undefined));
    std::fill(integers.begin() + evenAt, integers.begin() + lastAt + 1, 0);
    integers[versionAt] = 7;
    integers[countAt] = static_cast<std::int32_t>(samples);
    integers[typeAt] = timeSeries;
    integers[quantityAt] = parts.quantity;
    integers[zeroTimeAt] = zeroIsBegin;
    integers[evenAt] = integers[writableAt] = 1;
    std::string letters;
    while (letters.size() < length - lettersAt) {
        letters += letters.size() == 2 * nameLength ? "        " : "-12345  ";
    }
    const auto put = [&letters](std::size_t place, std::string text) {
        text.resize(text.empty() ? 0 : nameLength, ' ');
        letters.replace(place - lettersAt, text.size(), text);
    };
    put(stationAt, parts.station);
    put(componentAt, parts.component);
    return bytesOf(floats) + bytesOf(integers) + letters;
}

std::string SacHeader::footerBytes() const {
    std::array<double, doubleCount> doubles = {};
    doubles.fill(undefined);
    doubles[exactDelta] = step;
    doubles[exactBegin] = start;
    doubles[exactEnd] = start + static_cast<double>(samples - 1) * step;
    return bytesOf(doubles);
}
