#include "workbench/signals/Transfer.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <system_error>
#include <utility>

using Json = nlohmann::json;

ResultInfo Transfer::result() const {
    return {info.channels, info.samples, info.rate, info.axis, info.names, notes};
}

static Json toJson(const SignalAxis& axis) {
    return {
        {"name", axis.name}, {"start", axis.start},           {"step", axis.step},
        {"time", axis.time}, {"lowestStep", axis.lowestStep}, {"highestStep", axis.highestStep}};
}

static SignalAxis axisOf(const Json& json) {
    return {json.at("name"), json.at("start"),      json.at("step"),
            json.at("time"), json.at("lowestStep"), json.at("highestStep")};
}

static std::string toText(const Transfer& transfer) {
    const SignalInfo& info = transfer.info;
    const Json json = {{"format", info.format},
                       {"channels", info.channels},
                       {"samples", info.samples},
                       {"rate", info.rate},
                       {"axis", info.axis ? toJson(*info.axis) : Json()},
                       {"names", info.names},
                       {"remarks", info.remarks},
                       {"encoding", EncodingRow::of(transfer.target.encoding).word},
                       {"lossy", transfer.target.lossy},
                       {"notes", transfer.notes}};
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

static Transfer transferOf(const std::string& text) {
    const Json json = Json::parse(text);
    Transfer transfer;
    SignalInfo& info = transfer.info;
    info.format = json.at("format");
    info.channels = json.at("channels");
    info.samples = json.at("samples");
    info.rate = json.at("rate");
    if (!json.at("axis").is_null()) {
        info.axis = axisOf(json.at("axis"));
    }
    info.names = json.at("names").get<std::vector<std::string>>();
    info.remarks = json.at("remarks").get<std::vector<std::string>>();
    const EncodingRow* const encoding = EncodingRow::named(json.at("encoding").get<std::string>());
    transfer.target.encoding = encoding == nullptr ? Encoding::automatic : encoding->encoding;
    transfer.target.lossy = json.at("lossy");
    transfer.notes = json.at("notes").get<std::vector<std::string>>();
    return transfer;
}

[[noreturn]] static void failToKeep() {
    throw Failure(
        fmt::format("cannot keep the signal in a temporary file: {}; make room for it, or name "
                    "another folder in TMPDIR",
                    std::generic_category().message(errno)));
}

static void put(std::FILE* file, const void* bytes, std::size_t size) {
    errno = 0;
    if (std::fwrite(bytes, 1, size, file) < size) {
        failToKeep();
    }
}

void putSamples(std::FILE* file, const double* samples, std::size_t count) {
    put(file, samples, count * sizeof *samples);
}

void putFacts(std::FILE* file, const Transfer& transfer) {
    const std::string text = toText(transfer);
    const auto length = std::bit_cast<std::array<char, 8>>(std::uint64_t{text.size()});
    put(file, text.data(), text.size());
    put(file, length.data(), length.size());
    errno = 0;
    if (std::fflush(file) != 0) {
        failToKeep();
    }
}

[[noreturn]] static void refuse(const SourceName& source) {
    throw Failure(fmt::format("{}: the signal arrived incomplete; try again", source.shown));
}

// What is known of the signal. The file is left where the text begins.
static Transfer factsOf(std::FILE* file, const SourceName& source) {
    std::uint64_t length = 0;
    if (!seekFile(file, -8, SEEK_END) || std::fread(&length, sizeof length, 1, file) < 1) {
        refuse(source);
    }
    const std::int64_t end = filePosition(file) - 8;
    if (length > static_cast<std::uint64_t>(end)) {
        refuse(source);
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    const std::int64_t begin = end - static_cast<std::int64_t>(length);
    if (!seekFile(file, begin, SEEK_SET) ||
        std::fread(text.data(), 1, text.size(), file) < text.size() ||
        !seekFile(file, begin, SEEK_SET)) {
        refuse(source);
    }
    try {
        return transferOf(text);
    } catch (const Json::exception&) {
        refuse(source);
    }
}

// Of all channels, in bytes.
static std::int64_t sampleSize(const SignalInfo& info) {
    return std::int64_t{info.channels} * static_cast<std::int64_t>(sizeof(double));
}

TransferReader::TransferReader(FileHandle transferred, const SourceName& source)
    : file(std::move(transferred)), given(factsOf(file.get(), source)) {
    const std::int64_t bytes = filePosition(file.get());
    facts = given.info;
    facts.source = source;
    const bool isWhole = facts.channels >= 1 && facts.samples >= 1 &&
                         bytes % sampleSize(facts) == 0 &&
                         bytes / sampleSize(facts) == facts.samples &&
                         (facts.names.empty() || std::ssize(facts.names) == facts.channels);
    if (!isWhole) {
        refuse(source);
    }
    left = facts.samples;
    std::rewind(file.get());
}

std::int64_t TransferReader::read(double* interleaved, std::int64_t count) {
    const std::int64_t taken = std::min(count, left);
    const auto values = static_cast<std::size_t>(taken * facts.channels);
    if (std::fread(interleaved, sizeof *interleaved, values, file.get()) < values) {
        refuse(facts.source);
    }
    left -= taken;
    return taken;
}
