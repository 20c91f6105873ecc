#pragma once

#include <vector>

// What is known of the noise in a signal of N samples: its power per bin of the signal's spectrum,
//     S[j] = mean of |noise bin j|^2 / N,      j = 0 .. N/2,
// in squared units of the samples; the other bins mirror these. Over all N bins, sum S = N sigma^2.
class NoiseModel {
public:
    // Independent samples of the standard deviation sigma: S = sigma^2. length: N.
    static NoiseModel white(double sigma, int length);

    // Counts: independent, and by Poisson's law as uneven as they are high, so in the mean over the
    // signal white with the variance of their mean. Failure if that is below 0.
    static NoiseModel ofCounts(const std::vector<double>& counts, int length);

    // Noise like that of a stretch where the signal is quiet, given as its L samples: the
    // periodogram of the stretch without its mean, smoothed with triangular weights over
    // sqrt(L)/2 neighbours on either side (M. S. Bartlett, "Periodogram analysis and continuous
    // spectra", Biometrika 37 (1950) 1-16, for smoothing), and interpolated linearly to the bins
    // of N samples. Bin 0, which went with the mean, has the power of its neighbours. Failure if
    // there are fewer than 64 samples.
    static NoiseModel ofStretch(const std::vector<double>& quiet, int length);

    [[nodiscard]] const std::vector<double>& power() const { return powers; }  // S
    // Standard deviation of a sample.
    [[nodiscard]] double sigma() const;

private:
    NoiseModel(std::vector<double> powerPerBin, int length);

    std::vector<double> powers;
    int degrees;  // N
};
