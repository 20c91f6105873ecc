#include "transform/HartleyTransform.h"

#include "transform/hartleyTables.h"

#include <bit>
#include <utility>

static constexpr double sqrtTwo = 1.4142135623730951;

// The running twiddles of one stage, Buneman's recursion: next() steps t from 1 on and yields sine
// and cosine of t pi / 2^(k + 1). Each row of the work tables holds the pair that is due next for
// the values of t with the same number of trailing zeros.
class TwiddleRecursion {
public:
    double sine = 0.0, cosine = 1.0;

    explicit TwiddleRecursion(int stage) : k(stage) {}

    void next() {
        ++t;
        const int zeros = std::countr_zero(t);
        const auto i = static_cast<std::size_t>(k - zeros);
        sine = sineWork[i];
        cosine = cosineWork[i];
        if (i > 1) {
            int bit = zeros + 2;
            while ((t >> bit & 1U) != 0) {
                ++bit;
            }
            const auto j = static_cast<std::size_t>(k - bit);
            sineWork[i] = halfSecantTable[i] * (sineWork[i - 1] + sineWork[j]);
            cosineWork[i] = halfSecantTable[i] * (cosineWork[i - 1] + cosineWork[j]);
        }
    }

private:
    int k;
    unsigned t = 0;
    HartleyTable sineWork = sineTable;
    HartleyTable cosineWork = cosineTable;
};

static void reverseBits(double* f, int n) {
    int reversed = 0;
    for (int i = 1; i < n; ++i) {
        int bit = n / 2;
        reversed ^= bit;
        while ((reversed & bit) == 0) {
            bit /= 2;
            reversed ^= bit;
        }
        if (i > reversed) {
            std::swap(f[i], f[reversed]);
        }
    }
}

// Transforms of length 4, for an even log2 n.
static void firstPassOfFour(double* f, int n) {
    for (double* a = f; a != f + n; a += 4) {
        const double u0 = a[0] + a[1], u1 = a[0] - a[1];
        const double u2 = a[2] + a[3], u3 = a[2] - a[3];
        a[0] = u0 + u2;
        a[1] = u1 + u3;
        a[2] = u0 - u2;
        a[3] = u1 - u3;
    }
}

// Transforms of length 8, for an odd log2 n.
static void firstPassOfEight(double* f, int n) {
    for (double* a = f; a != f + n; a += 8) {
        const double p0 = (a[0] + a[1]) + (a[2] + a[3]), p1 = (a[0] + a[1]) - (a[2] + a[3]);
        const double p2 = (a[4] + a[5]) + (a[6] + a[7]), p3 = (a[4] + a[5]) - (a[6] + a[7]);
        const double q0 = (a[0] - a[1]) + (a[2] - a[3]), q1 = (a[0] - a[1]) - (a[2] - a[3]);
        const double q2 = sqrtTwo * (a[4] - a[5]), q3 = sqrtTwo * (a[6] - a[7]);
        a[0] = p0 + p2;
        a[2] = p1 + p3;
        a[4] = p0 - p2;
        a[6] = p1 - p3;
        a[1] = q0 + q2;
        a[3] = q1 + q3;
        a[5] = q0 - q2;
        a[7] = q1 - q3;
    }
}

// The two butterflies of a block whose twiddles are trivial: angle 0 and angle pi / 4. A block is
// four quarters of k1 elements.
static void untwiddledButterflies(double* f, int n, int k1) {
    const int k2 = 2 * k1, k3 = k1 + k2, k4 = 2 * k2, kx = k1 / 2;
    for (double* fi = f; fi != f + n; fi += k4) {
        const double f0 = fi[0] + fi[k1], f1 = fi[0] - fi[k1];
        const double f2 = fi[k2] + fi[k3], f3 = fi[k2] - fi[k3];
        fi[0] = f0 + f2;
        fi[k1] = f1 + f3;
        fi[k2] = f0 - f2;
        fi[k3] = f1 - f3;
        double* gi = fi + kx;
        const double g0 = gi[0] + gi[k1], g1 = gi[0] - gi[k1];
        const double g2 = sqrtTwo * gi[k2], g3 = sqrtTwo * gi[k3];
        gi[0] = g0 + g2;
        gi[k1] = g1 + g3;
        gi[k2] = g0 - g2;
        gi[k3] = g1 - g3;
    }
}

// The butterflies at offset `at` and its mirror image k1 - at, in every block. (s1, c1) is the
// twiddle of the last quarter step, (s2, c2) its double angle.
static void twiddledButterflies(double* f, int n, int k1, int at, double s1, double c1) {
    const int k2 = 2 * k1, k3 = k1 + k2, k4 = 2 * k2;
    const double c2 = c1 * c1 - s1 * s1, s2 = 2.0 * s1 * c1;
    for (double* block = f; block != f + n; block += k4) {
        double* fi = block + at;
        double* gi = block + k1 - at;
        double a = c2 * fi[k1] + s2 * gi[k1], d = s2 * fi[k1] - c2 * gi[k1];
        const double f0 = fi[0] + a, f1 = fi[0] - a, g0 = gi[0] + d, g1 = gi[0] - d;
        a = c2 * fi[k3] + s2 * gi[k3];
        d = s2 * fi[k3] - c2 * gi[k3];
        const double f2 = fi[k2] + a, f3 = fi[k2] - a, g2 = gi[k2] + d, g3 = gi[k2] - d;
        a = c1 * f2 + s1 * g3;
        d = s1 * f2 - c1 * g3;
        fi[0] = f0 + a;
        fi[k2] = f0 - a;
        gi[k1] = g1 + d;
        gi[k3] = g1 - d;
        a = s1 * g2 + c1 * f3;
        d = c1 * g2 - s1 * f3;
        gi[0] = g0 + a;
        gi[k2] = g0 - a;
        fi[k1] = f1 + d;
        fi[k3] = f1 - d;
    }
}

// Joins transforms of length 2^k, four at a time.
static void radix4Stage(double* f, int n, int k) {
    const int k1 = 1 << k;
    untwiddledButterflies(f, n, k1);
    TwiddleRecursion twiddle(k);
    for (int at = 1; at < k1 / 2; ++at) {
        twiddle.next();
        twiddledButterflies(f, n, k1, at, twiddle.sine, twiddle.cosine);
    }
}

void HartleyTransform::hartley(double* f, int n, int normalise) {
    if (n == 1) {
        return;
    }
    if (n == 2) {
        const double sum = f[0] + f[1], difference = f[0] - f[1];
        f[0] = sum;
        f[1] = difference;
    } else {
        reverseBits(f, n);
        const int log2n = std::countr_zero(static_cast<unsigned>(n));
        int done = log2n % 2 == 0 ? 2 : 3;
        if (done == 2) {
            firstPassOfFour(f, n);
        } else {
            firstPassOfEight(f, n);
        }
        for (; done < log2n; done += 2) {
            radix4Stage(f, n, done);
        }
    }
    if (normalise != 0) {
        for (int i = 0; i < n; ++i) {
            f[i] /= n;
        }
    }
}
