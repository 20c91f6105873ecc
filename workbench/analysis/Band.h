#pragma once

#include <cstddef>
#include <vector>

// For a fixed number of steps or strength every method is linear: noise v in the signal becomes
//     e[i] = sum_n f[i - n] v[n]      with f the whole run's answer to a unit impulse
// and the band is 1.96 standard deviations of it on either side of the result, which covers 95 of
// 100 samples of normal noise. It holds for the truth at the result's resolution: what the kernel
// has wiped out is not noise.

// Half the width of the band for white noise, 1.96 sigma sqrt(sum f^2).
//   answer   f, shifted as it may be
//   sigma    standard deviation of a sample of the signal
//   returns  in units of the result
double bandHalfWidth(const std::vector<double>& answer, double sigma);

// Half the width for noise of the power S per bin, 1.96 sqrt((1/N) sum_j S[j] |F[j]|^2), F the
// spectrum of f and the sum over all N bins.
//   answer   f, N samples, shifted as it may be
//   power    S, in squared units of the signal, for j = 0 .. N/2, as NoiseModel has it
//   returns  in units of the result. std::bad_alloc.
double bandOfNoise(const std::vector<double>& answer, const std::vector<double>& power);

// Half the width at each sample, for independent noise of variances v:
//     1.96 sqrt(sum_n f[i - n]^2 v[n])      periodic with N
// Counts have the variance that is expected of each (Poisson), the result's prediction of them.
//   answer       N samples, of an impulse at impulseIndex: f[i] = answer[impulseIndex + i]
//   variances    N samples, in squared units of the signal; below 0 is taken as 0
// By spectra, so its square is exact to some 1e-15 of its largest. std::bad_alloc.
std::vector<double> bandOfVariances(const std::vector<double>& answer, std::size_t impulseIndex,
                                    const std::vector<double>& variances);

// The resolution: the width at half height, in samples, of what becomes of a narrow line, the
// kernel convolved with f, about its maximum; straight between samples, periodic. An impulse has 1.
//   answer    N samples; where the impulse stood does not matter
//   kernel    N samples or fewer
//   returns   N where no sample lies below half height, 0 where none is above 0. std::bad_alloc.
double resolutionOf(const std::vector<double>& answer, const std::vector<double>& kernel);
