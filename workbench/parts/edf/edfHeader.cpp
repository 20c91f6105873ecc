#include "workbench/parts/edf/edfHeader.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

static constexpr std::size_t fixedLength = 256;  // of the header, and of what each signal adds
static constexpr std::int64_t mostSignals = 640;

namespace {

// Where the fields are. Those of the signals stand together by field: all labels, all units, ...
struct Field {
    std::size_t at, width;
};
constexpr Field reserved = {192, 44}, records = {236, 8}, duration = {244, 8},
                signalCount = {252, 4}, headerLength = {184, 8};
constexpr Field label = {0, 16}, physicalLow = {104, 8}, physicalHigh = {112, 8},
                digitalLow = {120, 8}, digitalHigh = {128, 8}, perRecord = {216, 8};

class EdfHeader {
public:
    EdfHeader(std::FILE* file, std::string displayName);

    void check() const;

private:
    [[noreturn]] void refuse(const std::string& what) const {
        throw Failure(fmt::format("{}: {}", name, what));
    }
    [[noreturn]] void refuseSignal(std::size_t signal, const std::string& what) const;

    [[nodiscard]] std::string_view text(Field field) const;
    [[nodiscard]] std::string_view text(Field field, std::size_t signal) const;
    [[nodiscard]] std::int64_t wholeNumber(Field field, const char* what) const;

    void checkLetters() const;
    void checkTime() const;
    void checkScale(std::size_t signal) const;
    [[nodiscard]] std::int64_t recordLength() const;
    void checkLength(std::int64_t recordBytes) const;

    std::string name, bytes;
    std::int64_t fileLength = 0;
    std::size_t signals = 0;
    bool wide = false;  // BDF, of 24 bits
};

}  // namespace

// A number that stands at the left of its field, blanks after it. False if there is none.
template <typename Number>
static bool parse(std::string_view text, Number& number) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

static std::string read(std::FILE* file, std::size_t length) {
    std::string bytes(length, '\0');
    seekFile(file, 0, SEEK_SET);
    bytes.resize(std::fread(bytes.data(), 1, length, file));
    return bytes;
}

EdfHeader::EdfHeader(std::FILE* file, std::string displayName)
    : name(std::move(displayName)), bytes(read(file, fixedLength)) {
    if (bytes.size() < fixedLength) {
        refuse("the file is truncated, within the first 256 bytes of its header; copy it again");
    }
    wide = bytes.front() == '\xff';
    const std::int64_t count = wholeNumber(signalCount, "number of signals");
    if (count < 1 || count > mostSignals) {
        refuse(fmt::format("its header declares {} signals, not 1 to {}; choose another file",
                           count, mostSignals));
    }
    signals = static_cast<std::size_t>(count);
    const std::size_t length = fixedLength * (signals + 1);
    bytes = read(file, length);
    if (bytes.size() < length) {
        refuse(
            fmt::format("the file is truncated within its header, which has {} bytes of {}; "
                        "copy it again",
                        bytes.size(), length));
    }
    seekFile(file, 0, SEEK_END);
    fileLength = filePosition(file);
}

void EdfHeader::refuseSignal(std::size_t signal, const std::string& what) const {
    throw Failure(fmt::format("{}, signal {} \"{}\": {}", name, signal + 1,
                              printable(text(label, signal)), what));
}

std::string_view EdfHeader::text(Field field) const {
    return std::string_view(bytes).substr(field.at, field.width);
}

std::string_view EdfHeader::text(Field field, std::size_t signal) const {
    const std::string_view padded = std::string_view(bytes).substr(
        fixedLength + field.at * signals + field.width * signal, field.width);
    return padded.substr(0, padded.find_last_not_of(' ') + 1);
}

std::int64_t EdfHeader::wholeNumber(Field field, const char* what) const {
    std::int64_t number = 0;
    if (!parse(text(field), number)) {
        refuse(fmt::format("the {} in the header is not a number, \"{}\"; save the file again",
                           what, printable(text(field))));
    }
    return number;
}

void EdfHeader::checkLetters() const {
    const auto odd = std::find_if(bytes.begin() + (wide ? 1 : 0), bytes.end(),
                                  [](char letter) { return letter < ' ' || letter > '~'; });
    if (odd != bytes.end()) {
        refuse(
            fmt::format("byte {} of the header is not a letter of ASCII, as libedf demands; "
                        "save the file again, units as uV",
                        odd - bytes.begin() + 1));
    }
}

// An exponent is read as a digit by the library.
void EdfHeader::checkTime() const {
    if (text(reserved).substr(1).starts_with("DF+D")) {
        refuse("a discontinuous recording, with gaps; save its stretches as files of their own");
    }
    double seconds = 0.0;
    if (!parse(text(duration), seconds) || !(seconds >= 1e-7) ||
        text(duration).find_first_not_of("+0123456789. ") != std::string_view::npos) {
        refuse(
            fmt::format("the duration of a record is not a decimal above 0, \"{}\"; save the "
                        "file again",
                        printable(text(duration))));
    }
}

void EdfHeader::checkScale(std::size_t signal) const {
    const int most = wide ? 0x7fffff : 0x7fff;
    int low = 0, high = 0;
    if (!parse(text(digitalLow, signal), low) || !parse(text(digitalHigh, signal), high) ||
        low < -most - 1 || high > most || low >= high) {
        refuseSignal(signal, fmt::format("the digital range \"{}\" to \"{}\" is not one of {} bits;"
                                         " save the file again",
                                         text(digitalLow, signal), text(digitalHigh, signal),
                                         wide ? 24 : 16));
    }
    double bottom = 0.0, top = 0.0;
    if (!parse(text(physicalLow, signal), bottom) || !parse(text(physicalHigh, signal), top) ||
        !std::isfinite(bottom) || !std::isfinite(top) || bottom == top) {
        refuseSignal(signal,
                     fmt::format("the physical range \"{}\" to \"{}\" is empty, or not numbers; "
                                 "save the file again",
                                 text(physicalLow, signal), text(physicalHigh, signal)));
    }
}

std::int64_t EdfHeader::recordLength() const {
    std::int64_t length = 0;
    for (std::size_t i = 0; i < signals; ++i) {
        std::int64_t samples = 0;
        if (!parse(text(perRecord, i), samples) || samples < 1) {
            refuseSignal(i, fmt::format("the number of samples in a record is not one above 0, "
                                        "\"{}\"; save the file again",
                                        text(perRecord, i)));
        }
        length += samples * (wide ? 3 : 2);
    }
    return length;
}

void EdfHeader::checkLength(std::int64_t recordBytes) const {
    const std::int64_t mostBytes = (wide ? 15 : 10) * std::int64_t{1024} * 1024;
    const std::int64_t count = wholeNumber(records, "number of records");
    if (count < 1) {
        refuse(
            "its header has no number of records, as of a recording that was not ended; end it "
            "in the program that wrote it");
    }
    if (recordBytes > mostBytes) {
        refuse(
            fmt::format("records of {} bytes, but libedf reads {} at most; save it with shorter "
                        "records",
                        recordBytes, mostBytes));
    }
    const std::int64_t present = fileLength - std::ssize(bytes), declared = count * recordBytes;
    if (present != declared) {
        refuse(fmt::format(
            "the file is {}: its header declares {} records of {} bytes, but {} "
            "bytes of records are present; copy it again",
            present < declared ? "truncated" : "too long", count, recordBytes, present));
    }
}

void EdfHeader::check() const {
    checkLetters();
    if (wholeNumber(headerLength, "length") != std::ssize(bytes)) {
        refuse(
            fmt::format("the header declares {} signals, but its own length is not {}; copy the "
                        "file again",
                        signals, bytes.size()));
    }
    checkTime();
    for (std::size_t i = 0; i < signals; ++i) {
        checkScale(i);
    }
    checkLength(recordLength());
}

void checkEdfHeader(std::FILE* file, const std::string& name) {
    EdfHeader(file, name).check();
}
