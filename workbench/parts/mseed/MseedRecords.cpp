#include "workbench/parts/mseed/MseedRecords.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

// What the library says where it returns no error: above all that the last sample is not the one
// that the encoding recorded.
static std::string complaint;

static void keepComplaint(char* text) {
    complaint = text;
    complaint.erase(complaint.find_last_not_of('\n') + 1);
}

static void ignore(char* /*text*/) {}

// A record may name lengths up to 2^16 beyond its own end, and the library follows it there.
static constexpr std::size_t room = MAXRECLEN + (std::size_t{1} << 17);

MseedRecords::MseedRecords(const std::string& path, std::string displayName)
    : name(std::move(displayName)), file(openFile(path, "rb")), bytes(room) {
    if (file == nullptr) {
        throw Failure(fmt::format("{} cannot be opened; copy it to another place first", name));
    }
    seekFile(file.get(), 0, SEEK_END);
    fileLength = filePosition(file.get());
    ms_loginit(ignore, "", keepComplaint, "");
}

MseedRecords::~MseedRecords() {
    msr_free(&header);
}

void MseedRecords::refuse(const std::string& what) const {
    throw Failure(fmt::format("{}, record at byte {}: {}", name, position, what));
}

bool MseedRecords::next() {
    do {
        position = following;
        if (position == fileLength) {
            return false;
        }
        readRecord();
        following = position + length;
    } while (header->samplecnt == 0);
    return true;
}

// Has the next bytes of the file, so many or all that are left.
int MseedRecords::fill(std::int64_t most) {
    const std::int64_t count = std::min(fileLength - position, most);
    if (!seekFile(file.get(), position, SEEK_SET) ||
        std::fread(bytes.data(), 1, static_cast<std::size_t>(count), file.get()) <
            static_cast<std::size_t>(count)) {
        refuse("the file changed while it was being read; start again");
    }
    return static_cast<int>(count);
}

// Few records are longer than usual, and few have many blockettes before the one with their length.
void MseedRecords::readRecord() {
    constexpr int usual = 4096;
    int present = fill(usual);
    length = ms_detect(bytes.data(), present);
    if (length == 0 || length > present) {
        present = fill(MAXRECLEN);
        length = ms_detect(bytes.data(), present);
    }
    if (length < MINRECLEN) {
        refuse("there is no data record of miniSEED 2 that has its length; copy the file again");
    }
    if (length > present) {
        refuse(
            fmt::format("the file is truncated: the record has {} bytes, but only {} are "
                        "present; copy it again",
                        length, present));
    }
    complaint.clear();
    if (msr_unpack(bytes.data(), length, &header, 0, 0) != MS_NOERROR) {
        refuse(fmt::format("the record is damaged: {}; copy the file again",
                           printable(complaint, 200)));
    }
    checkExtent();
}

// The bytes of a sample; 0: as many as the compression leaves of it.
static std::int64_t widthOf(int encoding) {
    switch (encoding) {
        case DE_INT16:
        case DE_GEOSCOPE163:
        case DE_GEOSCOPE164:
        case DE_CDSN:
        case DE_SRO:
        case DE_DWWSSN:
            return 2;
        case DE_GEOSCOPE24:
            return 3;
        case DE_INT32:
        case DE_FLOAT32:
            return 4;
        case DE_FLOAT64:
            return 8;
        case DE_ASCII:
            return 1;
        default:
            return 0;
    }
}

void MseedRecords::checkExtent() const {
    constexpr std::int64_t fixedHeader = 48;
    const std::int64_t data = header->fsdh->data_offset;
    if (header->Blkt1000 == nullptr) {
        refuse(
            "the record has no blockette 1000, which says how samples are stored; save it as "
            "miniSEED 2");
    }
    if (header->samplecnt > 0 && (data < fixedHeader || data > length ||
                                  header->samplecnt * widthOf(header->encoding) > length - data)) {
        refuse(
            fmt::format("the record is damaged: {} samples do not fit its {} bytes; copy the "
                        "file again",
                        header->samplecnt, length));
    }
}

std::string MseedRecords::channel() const {
    return fmt::format("{}.{}.{}.{}", header->network, header->station, header->location,
                       header->channel);
}

std::string MseedRecords::encoding() const {
    switch (header->encoding) {
        case DE_INT16:
            return "16-bit integer";
        case DE_INT32:
            return "32-bit integer";
        case DE_FLOAT32:
            return "32-bit float";
        case DE_FLOAT64:
            return "64-bit float";
        case DE_STEIM1:
            return "Steim-1";
        case DE_STEIM2:
            return "Steim-2";
        default:
            return ms_encodingstr(header->encoding);
    }
}

template <typename Sample>
static void append(const void* data, std::int64_t count, std::vector<double>& samples) {
    const auto* const begin = static_cast<const Sample*>(data);
    samples.insert(samples.end(), begin, begin + count);
}

void MseedRecords::appendSamples(std::vector<double>& samples) {
    complaint.clear();
    const bool isDecoded = msr_unpack(bytes.data(), length, &header, 1, 0) == MS_NOERROR &&
                           complaint.empty() && header->numsamples == header->samplecnt;
    if (!isDecoded) {
        refuse(fmt::format("the samples are damaged: {}; copy the file again",
                           complaint.empty() ? "some are missing" : printable(complaint, 200)));
    }
    switch (header->sampletype) {
        case 'i':
            return append<std::int32_t>(header->datasamples, header->numsamples, samples);
        case 'f':
            return append<float>(header->datasamples, header->numsamples, samples);
        case 'd':
            return append<double>(header->datasamples, header->numsamples, samples);
        default:
            refuse("the record holds text, which is not a signal; choose another channel");
    }
}

std::string timeText(hptime_t time) {
    std::array<char, 64> text = {};
    const char* const converted = ms_hptime2isotimestr(time, text.data(), 1);
    return converted == nullptr ? "an unknown time" : converted;
}
