#pragma once

#include "workbench/files/instrument/LineCursor.h"
#include "workbench/files/text/EvenAxis.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// A block of a JCAMP-DX file, from ##TITLE= to ##END=: a spectrum or a chromatogram, as labels with
// values and a table of its points (R. S. McDonald, P. A. Wilks, Appl. Spectrosc. 42 (1988)
// 151-162; version 5: P. Lampen et al., Appl. Spectrosc. 48 (1994) 1545-1552). Blocks may stand in
// one of type LINK, or one after the other.
struct JcampBlock {
    // All blocks of a file except those of type LINK. Titles that occur before are given a number.
    // Failure if a block does not end.
    static std::vector<JcampBlock> allOf(std::FILE* file, const std::string& name);

    // Whether a file begins with a title.
    static bool recognises(std::string_view head);

    std::string title, version;
    std::string refusal;  // why it is not a signal, without its name; empty: it is one
    std::string xUnits, xLabel, yUnits, yLabel;
    std::int64_t points = 0;
    std::string firstX, lastX;            // as they stand there
    double xFactor = 1.0, yFactor = 1.0;  // of the numbers in the table
    bool isPairs = false;  // x and y of each point; else x of the first one of a line
    LineCursor::Place table;

    [[nodiscard]] double first() const;
    [[nodiscard]] double step() const;

    // By first and last x, of as many digits as these; empty for a single point.
    [[nodiscard]] std::optional<EvenAxis> axis() const;
    // Of points that are even by their own x.
    [[nodiscard]] EvenAxis axis(const EvenSteps& steps) const;
    // With its unit; empty if there is neither name nor unit.
    [[nodiscard]] std::string yName() const;

private:
    [[nodiscard]] std::string xName() const;
};
