#pragma once

#include "workbench/signals/SourceName.h"

#include <cstdint>
#include <edflib.h>
#include <memory>
#include <string>
#include <vector>

// An open file of the library. Its signals are counted from 0, without those of annotations.
class EdfFile {
public:
    // Failure if the header is not as checkEdfHeader demands, or the library refuses it.
    EdfFile(const std::string& path, const SourceName& source);
    EdfFile(const EdfFile&) = delete;
    EdfFile& operator=(const EdfFile&) = delete;
    ~EdfFile();

    [[nodiscard]] int signals() const { return header->edfsignals; }
    [[nodiscard]] const edf_param_struct& signal(int index) const {
        return header->signalparam[index];
    }

    // The label, which has a number after it where signals before have the same: "EMG", "EMG#2".
    // Without a label, "signal 3".
    [[nodiscard]] const std::string& name(int index) const {
        return names[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] std::string unit(int index) const;
    [[nodiscard]] double rate(int index) const;    // Hz
    [[nodiscard]] std::string typeName() const;    // "16-bit integer"
    [[nodiscard]] std::string formatName() const;  // "EDF+"
    [[nodiscard]] std::string startTime() const;   // "2024-03-02T10:20:30"

    // The next digital values of a signal, so many. False if they cannot be had.
    bool read(int index, int count, int* values);

private:
    void nameSignals();

    std::unique_ptr<edf_hdr_struct> header;
    std::vector<std::string> names;
};
