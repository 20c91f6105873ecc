#include "workbench/analysis/MethodAdvice.h"

#include "tests/support/BlurredLines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using enum MethodAdvice::Method;

namespace {

struct Case {
    std::string what;
    Signal kernel;
    double symmetry, noiseHeight;
    MethodAdvice::Method method;
};

}  // namespace

TEST(MethodAdvice, FollowsKernelAndNoise) {
    const Signal smooth = peak(1024, 4.0), slow = decay(1024, 3.0);
    Signal difference(1024);
    difference[0] = 1.0;
    difference[1] = -0.99;
    for (const Case& entry :
         {Case{"smooth peak", smooth, 1.0, 1e-3, iteration},
          {"too clean for counts", smooth, 1.0, 1e-9, regularized},
          {"one-sided", smooth, 0.9, 1e-3, regularized},

          {"sharp peak", peak(1024, 0.8), 1.0, 1e-1, regularized},
          {"clean, but too near to zero", peak(1024, 2.0), 0.9, 1e-5, regularized},
          {"away from zero, clean", slow, 0.1, 1e-6, division},
          {"away from zero, noisy", slow, 0.1, 1e-2, regularized},
          {"weak at low frequencies", difference, 0.1, 3e-2, iteration}}) {
        const PowerSpectra spectra(blurredLines(entry.kernel, entry.noiseHeight, 9), entry.kernel);
        const MethodAdvice advice =
            adviseMethod(entry.symmetry, spectra, entry.noiseHeight / std::sqrt(3.0));
        EXPECT_EQ(advice.method, entry.method) << entry.what << ": " << advice.reason;
    }
}
