#pragma once

#include "benchmarks/Job.h"
#include "benchmarks/Must.h"
#include "benchmarks/PeakJob.h"

#include <limits>
#include <string>
#include <vector>

// Another way to do the work of a table.
struct Rival {
    std::string name;
    MakeJob make;
    bool sameBits = false;  // its result is the project's to the bit, not just within the bound
    int longest = std::numeric_limits<int>::max();  // at more columns it takes too long
};

// One kind of work at several sizes: the project's jobs, their rivals, and what is required.
struct Table {
    enum class Operands {
        kept,      // a run leaves them as they are
        reloaded,  // each run needs them anew, and is long against a copy
        zeros      // a run takes as long on zeros, which are zeros again after it
    };

    std::string name, title;
    std::vector<Size> sizes;
    std::string (*label)(Size size);
    Problem (*problem)(Size size);
    Operands operands;
    double (*flops)(Size size);
    // Bound on the rounding error of a result, relative to its largest number.
    double (*bound)(Size size);
    MakeJob project;
    std::vector<Rival> rivals;
    std::vector<Must> musts = {};
};

std::vector<Table> allTables();

// The table without the rivals and sizes of which nothing is required.
Table onlyMusts(const Table& table);

// Times all jobs of a table and prints it, line by line. Throws std::runtime_error, before the
// first time is taken, if a result of a line is not what the project's is. Returns a line for each
// must that is missed. One that is missed by no more than the spread is measured three times more
// before it counts.
std::vector<std::string> print(const Table& table, PeakJob& peak);
