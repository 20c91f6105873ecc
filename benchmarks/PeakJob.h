#pragma once

#include "benchmarks/Job.h"

#include <vector>

// Separate multiplications and additions as fast as this processor does them, on vectors of the
// instruction set in use: no memory is touched, and no operation waits for another.
class PeakJob : public Job {
public:
    void load(const Problem& problem) override;
    void run() override;
    [[nodiscard]] std::vector<double> result() const override;

    // Operations of a run.
    [[nodiscard]] double flops() const;

private:
    double sum = 0.0;
};
