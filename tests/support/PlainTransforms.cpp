#include "tests/support/PlainTransforms.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

using Long = long double;

// exp(sign 2 pi i numerator / denominator), the turns taken out in integers.
static std::complex<Long> unitCircle(std::size_t numerator, std::size_t denominator, int sign) {
    numerator %= denominator;
    const Long angle = 2 * std::numbers::pi_v<Long> * static_cast<Long>(numerator) /
                       static_cast<Long>(denominator);
    return {std::cos(angle), static_cast<Long>(sign) * std::sin(angle)};
}

LongSpectrum definingSum(const LongSpectrum& x, int sign) {
    LongSpectrum sums(x.size());
    for (std::size_t k = 0; k < x.size(); ++k) {
        for (std::size_t j = 0; j < x.size(); ++j) {
            sums[k] += x[j] * unitCircle(j * k, x.size(), sign);
        }
    }
    return sums;
}

// x at a stride; the results go to out, which has as many elements. roots holds exp(sign 2 pi i j /
// N).
// NOLINTNEXTLINE(misc-no-recursion): the recursion is the method, and log2 n deep
static void bisect(const std::complex<Long>* x, std::complex<Long>* out, std::size_t n,
                   std::size_t stride, const LongSpectrum& roots) {
    if (n == 1) {
        *out = *x;
        return;
    }
    const std::size_t half = n / 2;
    bisect(x, out, half, 2 * stride, roots);
    bisect(x + stride, out + half, half, 2 * stride, roots);
    for (std::size_t k = 0; k < half; ++k) {
        const std::complex<Long> w = roots[k * stride], odd = out[half + k];
        const std::complex<Long> turned(w.real() * odd.real() - w.imag() * odd.imag(),
                                        w.real() * odd.imag() + w.imag() * odd.real());
        out[half + k] = out[k] - turned;
        out[k] += turned;
    }
}

static LongSpectrum powerOfTwoTransform(const LongSpectrum& x, int sign) {
    LongSpectrum roots(x.size() / 2), out(x.size());
    for (std::size_t j = 0; j < roots.size(); ++j) {
        roots[j] = unitCircle(j, x.size(), sign);
    }
    bisect(x.data(), out.data(), x.size(), 1, roots);
    return out;
}

LongSpectrum longTransform(const LongSpectrum& x, int sign) {
    const std::size_t n = x.size();
    if (std::has_single_bit(n)) {
        return powerOfTwoTransform(x, sign);
    }
    const std::size_t m = std::bit_ceil(2 * n);
    LongSpectrum data(m), response(m);
    for (std::size_t k = 0; k < n; ++k) {
        const std::complex<Long> w = unitCircle(k * k, 2 * n, sign);
        data[k] = x[k] * w;
        response[k] = response[(m - k) % m] = std::conj(w);
    }
    data = powerOfTwoTransform(data, -1);
    response = powerOfTwoTransform(response, -1);
    for (std::size_t k = 0; k < m; ++k) {
        data[k] *= response[k] / static_cast<Long>(m);
    }
    data = powerOfTwoTransform(data, +1);
    data.resize(n);
    for (std::size_t k = 0; k < n; ++k) {
        data[k] *= unitCircle(k * k, 2 * n, sign);
    }
    return data;
}

LongSpectrum widen(const Signal& re, const Signal& im) {
    LongSpectrum x;
    for (std::size_t j = 0; j < re.size(); ++j) {
        x.emplace_back(re[j], im[j]);
    }
    return x;
}

static std::size_t reversed(std::size_t index, std::size_t n) {
    std::size_t result = 0;
    for (std::size_t bit = 1; bit < n; bit *= 2) {
        result = 2 * result + index % 2;
        index /= 2;
    }
    return result;
}

static void permute(Signal& f) {
    for (std::size_t i = 0; i < f.size(); ++i) {
        if (i < reversed(i, f.size())) {
            std::swap(f[i], f[reversed(i, f.size())]);
        }
    }
}

void plainRadix2(Signal& re, Signal& im, double sign) {
    const std::size_t n = re.size();
    permute(re);
    permute(im);
    for (std::size_t le = 2; le <= n; le *= 2) {
        const std::size_t half = le / 2;
        const double theta = std::numbers::pi / static_cast<double>(half);
        const double c = std::cos(theta), s = sign * std::sin(theta);
        double ur = 1.0, ui = 0.0;
        for (std::size_t j = 0; j < half; ++j) {
            for (std::size_t i = j; i < n; i += le) {
                const std::size_t p = i + half;
                const double tr = ur * re[p] - ui * im[p], ti = ui * re[p] + ur * im[p];
                re[p] = re[i] - tr;
                im[p] = im[i] - ti;
                re[i] = re[i] + tr;
                im[i] = im[i] + ti;
            }
            const double advanced = c * ur - s * ui;
            ui = c * ui + s * ur;
            ur = advanced;
        }
    }
    if (sign == 1.0) {
        for (std::size_t i = 0; i < n; ++i) {
            re[i] = re[i] / static_cast<double>(n);
            im[i] = im[i] / static_cast<double>(n);
        }
    }
}
