#pragma once

#include "benchmarks/Job.h"

#include <optional>
#include <string>
#include <vector>

// Multiplications and additions as fast as this processor does them: no memory is touched, and no
// operation waits for another. How many a cycle takes depends on more than the ports: on the order
// in which products and sums arrive, on the width of the vectors, on the front end. Several
// arrangements are therefore measured, and the fastest is the peak.
class PeakJob : public Job {
public:
    // separate: a product is rounded before it is added. fused: it is not.
    enum class Operations { separate, fused };

    // The fastest arrangement; none if the processor has no such operations.
    static std::optional<PeakJob> fastest(Operations operations);

    void load(const Problem& problem) override;
    void run() override;
    [[nodiscard]] std::vector<double> result() const override;

    // Operations of a run: a fused one counts as two.
    [[nodiscard]] double flops() const;
    // Operations per second, when it was chosen.
    [[nodiscard]] double rate() const { return measured; }
    // "256 bits, 4 products and then 4 sums"
    [[nodiscard]] std::string arrangement() const;

    struct Arrangement {
        Operations operations;
        int lanes;
        int chains;  // sums that are independent of each other
        int group;   // so many products, and then their sums
        bool nops;   // between the groups, which changes how instructions are taken in
        double (*work)();
    };

private:
    explicit PeakJob(const Arrangement& someArrangement) : chosen(&someArrangement) {}

    const Arrangement* chosen;
    double measured = 0.0;
    double sum = 0.0;
};

// Cycles per second, by a chain of additions of integers, each of which takes one.
double measureClock();
