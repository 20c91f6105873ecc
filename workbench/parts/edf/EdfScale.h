#pragma once

// How the integers of a signal become physical values: with the integers d0 < d1 that stand for the
// physical values p0 and p1,
//     p = (p0 (d1 - d) + p1 (d - d0)) / (d1 - d0).
// The header has p0 and p1 as decimals, so both are whole numbers after a multiplication by a power
// of ten. With these the sum is exact and only the division rounds: a step of 0.1 gives 0.1, 0.2
// and 0.3, and not what rounded bounds leave of them.
class EdfScale {
public:
    EdfScale(double physicalLow, double physicalHigh, int digitalLow, int digitalHigh);

    [[nodiscard]] double physical(int digital) const {
        return (p0 * (d1 - digital) + p1 * (digital - d0)) / divisor;
    }

private:
    double p0, p1, d0, d1;
    double divisor;  // d1 - d0, times the power of ten that is in p0 and p1
};
