#include "kernels/trigonometry.h"
#include "transform/FourierTransform.h"

#include <algorithm>
#include <bit>
#include <new>
#include <numbers>
#include <vector>

static constexpr int longestChirp = 1 << 29;

// (re, im) becomes its product with (factorRe, factorIm), element by element.
static void multiply(double* re, double* im, const double* factorRe, const double* factorIm,
                     int n) {
    for (int i = 0; i < n; ++i) {
        const double real = re[i] * factorRe[i] - im[i] * factorIm[i];
        im[i] = re[i] * factorIm[i] + im[i] * factorRe[i];
        re[i] = real;
    }
}

void FourierTransform::chirpTransform(double* re, double* im, int n, int sign) {
    if (n > longestChirp) {
        throw std::bad_alloc();
    }
    const auto m = static_cast<int>(nextPowerOfTwo(2 * n));
    const auto size = static_cast<std::size_t>(m);
    std::vector<double> dataRe(size), dataIm(size), chirpRe(size), chirpIm(size);
    makeChirp(chirpRe.data(), chirpIm.data(), n, m, sign);
    std::vector<double> conjugateRe = chirpRe, conjugateIm = chirpIm;

    std::copy_n(re, n, dataRe.data());
    std::copy_n(im, n, dataIm.data());
    multiply(dataRe.data(), dataIm.data(), chirpRe.data(), chirpIm.data(), n);
    std::for_each_n(conjugateIm.data(), n, [](double& value) { value = -value; });
    extendChirp(conjugateRe.data(), conjugateIm.data(), n, m);
    circularFold(conjugateRe.data(), conjugateIm.data(), dataRe.data(), dataIm.data(),
                 std::countr_zero(size));
    extendChirp(chirpRe.data(), chirpIm.data(), n, m);
    multiply(chirpRe.data(), chirpIm.data(), dataRe.data(), dataIm.data(), m);

    // Sample n + k of the convolution takes the chirp at indices 1 to 2 n - 1 only: no negative
    // index is needed, and nothing wraps round. So the transform is the block that starts at n.
    std::copy_n(chirpRe.data() + n, n, re);
    std::copy_n(chirpIm.data() + n, n, im);
    if (sign > 0) {
        const double scale = 1.0 / n;
        std::for_each_n(re, n, [scale](double& value) { value *= scale; });
        std::for_each_n(im, n, [scale](double& value) { value *= scale; });
    }
}

void FourierTransform::makeChirp(double* chirpRe, double* chirpIm, int n, int m, int sign) {
    std::fill_n(chirpRe, m, 0.0);
    std::fill_n(chirpIm, m, 0.0);
    const double base = sign * std::numbers::pi / n;
    const auto period = 2 * static_cast<std::uint32_t>(n);
    // q is k^2 mod 2n, kept in integers. As pi k^2 / n the angle would grow to pi n, and its
    // rounding error with it.
    std::uint32_t q = 0;
    for (int k = 0; k < n; ++k) {
        const double angle = q * base;
        q += 2 * static_cast<std::uint32_t>(k) + 1;
        if (q >= period) {
            q -= period;
        }
        chirpRe[k] = cosine(angle);
        chirpIm[k] = sine(angle);
    }
}

void FourierTransform::extendChirp(double* re, double* im, int n, int m) {
    const bool negate = n % 2 != 0;
    for (int i = n; i < m; ++i) {
        re[i] = negate ? -re[i - n] : re[i - n];
        im[i] = negate ? -im[i - n] : im[i - n];
    }
}

void FourierTransform::circularFold(double* fixedRe, double* fixedIm, double* dataRe,
                                    double* dataIm, int logM) {
    const int m = 1 << logM;
    hartleyComplexTransform(fixedRe, fixedIm, m, +1);
    hartleyComplexTransform(dataRe, dataIm, m, +1);
    multiply(dataRe, dataIm, fixedRe, fixedIm, m);
    hartleyComplexTransform(dataRe, dataIm, m, -1);
}
