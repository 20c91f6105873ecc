#include "workbench/parts/edf/EdfFile.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/edf/edfHeader.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

// A field without the blanks after it.
static std::string trimmed(std::string_view field) {
    return std::string(field.substr(0, field.find_last_not_of(' ') + 1));
}

// Of an error of the library.
static std::string refusalOf(int error) {
    return error == EDFLIB_FILE_CONTAINS_FORMAT_ERRORS
               ? "libedf refuses the header: the date, or in a file of the plus kind what is said "
                 "of patient, recording and annotations, is not in the form laid down; save it "
                 "again, or as plain EDF or BDF"
               : fmt::format("libedf cannot open the file, error {}; copy it again", error);
}

EdfFile::EdfFile(const std::string& path, const SourceName& source)
    : header(std::make_unique<edf_hdr_struct>()) {
    {
        const FileHandle file = openFile(path, "rb");
        if (file == nullptr) {
            throw Failure(
                fmt::format("{} cannot be opened; copy it to another place first", source.shown));
        }
        checkEdfHeader(file.get(), source.shown);
    }
    if (edfopen_file_readonly(path.c_str(), header.get(), EDFLIB_DO_NOT_READ_ANNOTATIONS) != 0) {
        throw Failure(fmt::format("{}: {}", source.shown, refusalOf(header->filetype)));
    }
    nameSignals();
}

EdfFile::~EdfFile() {
    edfclose_file(header->handle);
}

void EdfFile::nameSignals() {
    for (int i = 0; i < signals(); ++i) {
        std::string label = trimmed(signal(i).label);
        if (label.empty()) {
            label = fmt::format("signal {}", i + 1);
        }
        std::string name = label;
        for (int n = 2; std::find(names.begin(), names.end(), name) != names.end(); ++n) {
            name = fmt::format("{}#{}", label, n);
        }
        names.push_back(name);
    }
}

std::string EdfFile::unit(int index) const {
    return trimmed(signal(index).physdimension);
}

double EdfFile::rate(int index) const {
    return static_cast<double>(signal(index).smp_in_datarecord) *
           static_cast<double>(EDFLIB_TIME_DIMENSION) /
           static_cast<double>(header->datarecord_duration);
}

static bool isWide(int type) {
    return type == EDFLIB_FILETYPE_BDF || type == EDFLIB_FILETYPE_BDFPLUS;
}

std::string EdfFile::typeName() const {
    return isWide(header->filetype) ? "24-bit integer" : "16-bit integer";
}

std::string EdfFile::formatName() const {
    const bool plus =
        header->filetype == EDFLIB_FILETYPE_EDFPLUS || header->filetype == EDFLIB_FILETYPE_BDFPLUS;
    return fmt::format("{}{}", isWide(header->filetype) ? "BDF" : "EDF", plus ? "+" : "");
}

std::string EdfFile::startTime() const {
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", header->startdate_year,
                       header->startdate_month, header->startdate_day, header->starttime_hour,
                       header->starttime_minute, header->starttime_second);
}

bool EdfFile::read(int index, int count, int* values) {
    return edfread_digital_samples(header->handle, index, count, values) == count;
}
