#pragma once

#include <vector>

// Errors over errors, of many runs.
class Ratios {
public:
    void add(double ratio) { values.push_back(ratio); }

    // That which a share of them does not exceed: 0.5 is the median, 1 the worst.
    [[nodiscard]] double quantile(double share) const;
    [[nodiscard]] double worst() const { return quantile(1.0); }
    [[nodiscard]] double median() const { return quantile(0.5); }

private:
    std::vector<double> values;
};
