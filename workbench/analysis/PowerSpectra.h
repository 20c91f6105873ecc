#pragma once

#include <cstddef>
#include <vector>

// Squared magnitudes of the spectra of a signal and a kernel at one length, that of the longer; the
// shorter has zeros appended. With the angular frequency w = 2 pi j / length,
//     signal[j] = |Y(w)|^2      kernel[j] = |H(w)|^2      j = 0 .. N/2
// in squared units of the samples, N = length. The other bins of real signals mirror these.
//
// Oversampled operands have r samples where the original ones have one. Their spectra are empty
// except in the N = length / r bins of the original ones, and these alone stand here. The bin at
// half the original rate, where N is even, is halved into two: kernel[N/2] is that of a half, and
// signal[N/2] the sum of both.
struct PowerSpectra {
    // Operands as a run takes them; neither is empty. oversampling: r, of which the length is a
    // multiple. Failure if a sample is not finite, if either is all zero, or if squares leave the
    // range of doubles. std::bad_alloc.
    PowerSpectra(const std::vector<double>& signalSamples, const std::vector<double>& kernelSamples,
                 int oversampling = 1);

    // Those of the same operands oversampled by that factor. These are not oversampled themselves.
    [[nodiscard]] PowerSpectra oversampledBy(int factor) const;

    int length, oversampling;
    std::vector<double> signal, kernel;

    // N, as many as the signal has samples before it is oversampled: its degrees of freedom.
    [[nodiscard]] int degrees() const { return length / oversampling; }
    // How many of the N bins are alike bin j: itself, and its mirror image where that is another.
    [[nodiscard]] int multiplicity(std::size_t j) const;
    // w
    [[nodiscard]] double frequency(std::size_t j) const;
    // Sum of the signal's squared samples, (1/length) sum |Y|^2 over all bins.
    [[nodiscard]] double energy() const;
    // max |H|^2
    [[nodiscard]] double largestGain() const;
};
