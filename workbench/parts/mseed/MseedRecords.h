#pragma once

#include "workbench/system/FileHandle.h"

#include <cstdint>
#include <libmseed.h>
#include <string>
#include <vector>

// The data records of a miniSEED file, one after the other ("SEED Reference Manual", format version
// 2.4, International Federation of Digital Seismograph Networks, 2012, chapter 8 and appendix G).
class MseedRecords {
public:
    // The name is for messages. Failure if the file cannot be opened.
    MseedRecords(const std::string& path, std::string displayName);
    MseedRecords(const MseedRecords&) = delete;
    MseedRecords& operator=(const MseedRecords&) = delete;
    ~MseedRecords();

    // Goes to the next record that has samples. False after the last one. Failure if something else
    // comes, or a record that is truncated or contradicts itself.
    bool next();

    // Of the record under way, without its samples.
    [[nodiscard]] const MSRecord& record() const { return *header; }
    [[nodiscard]] std::string channel() const;  // "IU.ANMO.00.BHZ"
    [[nodiscard]] std::int64_t begin() const { return position; }
    [[nodiscard]] std::string encoding() const;  // "32-bit integer", "Steim-2"

    // Adds its samples. Failure if they cannot be decoded, or are not those that were encoded.
    void appendSamples(std::vector<double>& samples);

    [[noreturn]] void refuse(const std::string& what) const;

private:
    int fill(std::int64_t most);
    void readRecord();
    void checkExtent() const;

    std::string name;
    FileHandle file;
    std::int64_t fileLength = 0;
    std::int64_t position = 0, following = 0;  // in the file
    std::vector<char> bytes;
    int length = 0;  // of the record
    MSRecord* header = nullptr;
};

// "2024-03-02T10:20:30.000000", in UTC.
std::string timeText(hptime_t time);
