#pragma once

#include "workbench/files/instrument/LineCursor.h"
#include "workbench/signals/SignalAxis.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// A function at nodal degrees of freedom: dataset 58 of a universal file, as text or, as 58b, with
// its values in binary. A file is a sequence of datasets of many numbers, each between two lines
// that hold -1 alone; eleven lines of text stand before the values of a 58:
//     1 to 5   identification, which is free
//     6        nodes and directions
//     7        type and number of the values, start and step of the abscissa
//     8, 9     type, label and unit of abscissa and ordinate
//     10, 11   the same of the ordinate's denominator and of z
// (Universal File Format dataset 58, "Function at Nodal DOF", Structural Dynamics Research
// Laboratory, University of Cincinnati.)
struct UffDataset {
    // All datasets 58 of a file, in their order; others are passed over. Failure if the file is not
    // made of datasets, or ends within one.
    static std::vector<UffDataset> allOf(std::FILE* file, const std::string& name);

    // Whether the line ends a dataset, or begins one.
    static bool isDelimiter(std::string_view line);

    std::string refusal;  // why it is not a signal, without its name; empty: it is one
    std::string name;     // of the ordinate, with its unit; empty if there is none
    std::int64_t count = 0;
    std::optional<SignalAxis> axis;
    double rate = 0.0;

    LineCursor::Place values;  // where they begin
    bool binary = false, bigEndian = false;
    int bytes = 8;  // of a value: 4 or 8
};
