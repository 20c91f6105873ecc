#include "workbench/methods/Method.h"

#include <fmt/format.h>

#include <cmath>

// A symmetric system is solved, as many equations as samples.
static double work(double length, double /*shorter*/, const FendraSettings& /*settings*/) {
    return length * length * length / 3.0;
}

static double matrix(double length) {
    return 8.0 * length * length;
}

static std::vector<std::string> remarks(const Evidence& evidence) {
    constexpr double shortfall = 0.1;
    std::vector<std::string> all = remarksOnAmplification(evidence);
    const double oneDeviation = evidence.numbers[1];
    if (!(std::abs(oneDeviation) <= shortfall)) {
        all.push_back(fmt::format(
            "the filter falls short of an inverse: the central element of its identity is {:.2g} "
            "instead of 1",
            1.0 - oneDeviation));
    }
    return all;
}

extern const Method pseudoInverseMethod = {
    .word = "pseudo-inverse",
    .about = "convolves with the best inverse filter of the kernel's length: for short kernels",
    .direction = FendraSettings::deconvolution,
    .code = FendraSettings::pseudoInverse,
    .control = 1028,
    .equalLengths = true,
    .lag = 0,
    .numbers = {"zeroDeviation", "oneDeviation"},
    .multiplyAdds = work,
    .bytes = matrix,
    .onOverflow = "the computation overflowed; scale the signals",
    .remarks = remarks,
};
