#pragma once

#include "workbench/parts/hdf5/Hdf5Dataset.h"
#include "workbench/parts/variables/SampleRows.h"

#include <cstdint>
#include <optional>
#include <vector>

// A dataset by rows: those along one of its dimensions, with channels along another or a single
// one, at an index of each that is left.
class Hdf5Rows final : public SampleRows {
public:
    struct Directions {
        std::size_t rows = 0;
        std::optional<std::size_t> channels;
        std::vector<std::uint64_t> index;  // one a dimension; 0 along rows and channels
    };

    Hdf5Rows(Hdf5Dataset samples, Directions itsDirections);

    std::size_t read(std::int64_t first, std::int64_t count, double* to) override;

private:
    Hdf5Dataset dataset;
    Directions directions;
    std::vector<double> turned;  // where channels come before rows
};
