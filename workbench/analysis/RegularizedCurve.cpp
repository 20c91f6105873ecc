#include "workbench/analysis/RegularizedCurve.h"

#include <cmath>
#include <utility>

static std::vector<double> penaltyOf(int order, const PowerSpectra& spectra) {
    std::vector<double> penalty(spectra.kernel.size(), 1.0);
    for (std::size_t j = 0; order == 2 && j < penalty.size(); ++j) {
        penalty[j] = std::pow(std::sin(0.5 * spectra.frequency(j)), 4) + 1e-12;
    }
    return penalty;
}

RegularizedCurve::RegularizedCurve(const PowerSpectra& powerSpectra, int order)
    : RegularizedCurve(powerSpectra, penaltyOf(order, powerSpectra)) {}

RegularizedCurve::RegularizedCurve(PowerSpectra powerSpectra, std::vector<double> penalty)
    : AnswerCurve(std::move(powerSpectra)), penalties(std::move(penalty)) {
    const double largest = spectra().largestGain();
    for (double& weight : penalties) {
        weight *= largest;
    }
}

std::complex<double> RegularizedCurve::left(std::size_t j, double strength) const {
    const double penalty = strength * penalties[j];
    return penalty / (spectra().kernel[j] + penalty);
}
