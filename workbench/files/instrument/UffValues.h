#pragma once

#include "workbench/files/instrument/LineCursor.h"
#include "workbench/files/instrument/UffDataset.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

// The values of a dataset, from the first to the last.
class UffValues {
public:
    // The file stays the caller's; the name is for messages. A text is read in blocks of so many
    // bytes.
    UffValues(std::FILE* opened, const UffDataset& of, std::string displayName,
              std::size_t blockLength);

    // The next count values, of which there are as many. Failure where one is not a number, or
    // where a text has fewer of them or more than its header declares.
    void read(double* to, std::size_t count);

private:
    void readBinary(double* to, std::size_t count);
    void readText(double* to, std::size_t count);
    void readLine();
    void requireEnd();

    std::FILE* file;
    UffDataset dataset;
    std::string name;
    LineCursor cursor;
    std::int64_t position = 0;        // of the value that is read next
    std::vector<std::uint8_t> bytes;  // as they stand in the file
    std::vector<double> line;         // of a line of text
    std::size_t taken = 0;            // of these
};
