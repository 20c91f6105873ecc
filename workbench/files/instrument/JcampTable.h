#pragma once

#include "workbench/files/instrument/AsdfLine.h"
#include "workbench/files/instrument/JcampBlock.h"
#include "workbench/files/instrument/LineCursor.h"

#include <cstdint>
#include <cstdio>
#include <string>

// The points of a table, from the first to the last. In one of lines X++(Y..Y), each line begins
// with the x of its first y, which has to be where first and last x put it; after a line that ends
// in differences, the first y is the last one again, and has to be the same.
class JcampTable {
public:
    struct Point {
        double y = 0.0;               // as it is, with its factor
        double x = 0.0;               // of a pair, as it stands there
        std::string_view xText = {};  // likewise, until the next call
    };

    // The block lasts; so does the file. The name is for messages.
    JcampTable(std::FILE* file, const JcampBlock& of, const std::string& name);

    // The next point; false after the last. Failure where there is none, though the block declares
    // more, or more than it declares, or where an x or a y is not what it has to be.
    bool next(Point& point);

private:
    bool nextLine();
    void beginLine();
    void checkX(const AsdfLine::Item& item);
    bool nextY();
    bool nextPair(Point& point);
    AsdfLine::Item number();
    [[noreturn]] void refuse(const AsdfLine::Item& item) const;

    const JcampBlock& block;
    LineCursor cursor;
    AsdfLine line;
    std::int64_t position = 0;  // of the point that is read next
    double value = 0.0, difference = 0.0;
    std::int64_t repeats = 0;   // of the item before, still to come
    bool byDifference = false;  // the item before was a difference
};
