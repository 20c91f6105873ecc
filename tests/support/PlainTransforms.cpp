#include "tests/support/PlainTransforms.h"

#include "kernels/hartleyTables.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>

using Long = long double;

// exp(sign 2 pi i numerator / denominator), the turns taken out in integers.
static std::complex<Long> unitCircle(std::uint64_t numerator, std::uint64_t denominator, int sign) {
    numerator %= denominator;
    const Long angle = 2 * std::numbers::pi_v<Long> * static_cast<Long>(numerator) /
                       static_cast<Long>(denominator);
    return {std::cos(angle), static_cast<Long>(sign) * std::sin(angle)};
}

LongSpectrum definingSum(const LongSpectrum& x, int sign) {
    LongSpectrum sums(x.size());
    for (std::size_t k = 0; k < x.size(); ++k) {
        for (std::size_t j = 0; j < x.size(); ++j) {
            sums[k] += x[j] * unitCircle(std::uint64_t{j} * k, x.size(), sign);
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
        const std::complex<Long> w = unitCircle(std::uint64_t{k} * k, 2 * n, sign);
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
        data[k] *= unitCircle(std::uint64_t{k} * k, 2 * n, sign);
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

static constexpr double root = 1.4142135623730951;

static void butterfly(double& x, double& y) {
    const double difference = x - y;
    x = x + y;
    y = difference;
}

static void reflect(double c, double s, double& x, double& y) {
    const double first = c * x + s * y;
    y = s * x - c * y;
    x = first;
}

static void transformOfFour(double& a0, double& a1, double& a2, double& a3) {
    butterfly(a0, a1);
    butterfly(a2, a3);
    butterfly(a0, a2);
    butterfly(a1, a3);
}

static void transformOfEight(double* a) {
    transformOfFour(a[0], a[1], a[2], a[3]);
    butterfly(a[4], a[5]);
    butterfly(a[6], a[7]);
    butterfly(a[4], a[6]);
    a[5] = root * a[5];
    a[7] = root * a[7];
    for (int i = 0; i < 4; ++i) {
        butterfly(a[i], a[i + 4]);
    }
}

// x and y are the first elements of four that lie k1 apart.
static void plainTwiddled(double* x, double* y, std::size_t k1, double c1, double s1) {
    const std::size_t k2 = 2 * k1, k3 = 3 * k1;
    const double c2 = c1 * c1 - s1 * s1, s2 = 2 * s1 * c1;
    for (const std::size_t half : {std::size_t{0}, k2}) {
        reflect(c2, s2, x[half + k1], y[half + k1]);
        butterfly(x[half], x[half + k1]);
        butterfly(y[half], y[half + k1]);
    }
    reflect(c1, s1, x[k2], y[k3]);
    butterfly(x[0], x[k2]);
    butterfly(y[k1], y[k3]);
    reflect(s1, c1, y[k2], x[k3]);
    butterfly(y[0], y[k2]);
    butterfly(x[k1], x[k3]);
}

static void plainStage(Signal& f, std::size_t k) {
    const std::size_t k1 = std::size_t{1} << k, k2 = 2 * k1, k3 = 3 * k1, k4 = 4 * k1;
    for (std::size_t b = 0; b < f.size(); b += k4) {
        double *x = &f[b], *y = x + k1 / 2;
        transformOfFour(x[0], x[k1], x[k2], x[k3]);
        butterfly(y[0], y[k1]);
        y[k2] = root * y[k2];
        y[k3] = root * y[k3];
        butterfly(y[0], y[k2]);
        butterfly(y[k1], y[k3]);
    }
    auto sineWork = kernels::sineTable, cosineWork = kernels::cosineTable;
    for (std::size_t t = 1; t < k1 / 2; ++t) {
        std::size_t e = 0;
        while ((t >> e) % 2 == 0) {
            ++e;
        }
        const std::size_t i = k - e;
        const double s1 = sineWork[i], c1 = cosineWork[i];
        if (i > 1) {
            std::size_t j = e + 2;
            while ((t >> j) % 2 == 1) {
                ++j;
            }
            sineWork[i] = kernels::halfSecantTable[i] * (sineWork[i - 1] + sineWork[k - j]);
            cosineWork[i] = kernels::halfSecantTable[i] * (cosineWork[i - 1] + cosineWork[k - j]);
        }
        for (std::size_t b = 0; b < f.size(); b += k4) {
            plainTwiddled(&f[b + t], &f[b + k1 - t], k1, c1, s1);
        }
    }
}

void plainHartley(Signal& f, bool normalise) {
    const std::size_t n = f.size();
    const auto log2n = static_cast<std::size_t>(std::bit_width(n) - 1);
    if (n == 2) {
        f = {f[0] + f[1], f[0] - f[1]};
    } else if (n > 2) {
        permute(f);
        for (std::size_t b = 0; b < n; b += log2n % 2 == 0 ? 4 : 8) {
            log2n % 2 == 0 ? transformOfFour(f[b], f[b + 1], f[b + 2], f[b + 3])
                           : transformOfEight(&f[b]);
        }
        for (std::size_t k = log2n % 2 + 2; k < log2n; k += 2) {
            plainStage(f, k);
        }
    }
    for (double& value : f) {
        value = normalise ? value / static_cast<double>(n) : value;
    }
}

void plainHartleyComplex(Signal& re, Signal& im, int sense) {
    const std::size_t n = re.size();
    if (sense >= 0) {
        plainHartley(re, false);
        plainHartley(im, false);
    }
    for (std::size_t i = 1; i < n / 2; ++i) {
        const std::size_t low = sense >= 0 ? i : n - i, high = n - low;
        const double A = re[i] + re[n - i], C = im[i] + im[n - i];
        const double B = re[i] - re[n - i], D = im[i] - im[n - i];
        re[low] = (A - D) * 0.5;
        re[high] = (A + D) * 0.5;
        im[low] = (C + B) * 0.5;
        im[high] = (C - B) * 0.5;
    }
    if (sense < 0) {
        plainHartley(re, true);
        plainHartley(im, true);
    }
}
