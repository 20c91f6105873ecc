#pragma once

#include <cstddef>
#include <vector>

// Squared magnitudes of the spectra of a signal and a kernel at one length N, that of the longer;
// the shorter has zeros appended. With the angular frequency w = 2 pi j / N,
//     signal[j] = |Y(w)|^2      kernel[j] = |H(w)|^2      j = 0 .. N/2
// in squared units of the samples. The other bins of real signals mirror these.
struct PowerSpectra {
    // Neither is empty. Failure if a sample is not finite, if either is all zero, or if squares
    // leave the range of doubles. std::bad_alloc.
    PowerSpectra(const std::vector<double>& signalSamples,
                 const std::vector<double>& kernelSamples);

    int length;  // N
    std::vector<double> signal, kernel;

    // How many of the N bins are alike bin j: itself, and its mirror image where that is another.
    [[nodiscard]] int multiplicity(std::size_t j) const;
    // Sum of the signal's squared samples, (1/N) sum |Y|^2 over all N bins.
    [[nodiscard]] double energy() const;
    // max |H|^2
    [[nodiscard]] double largestGain() const;
};
