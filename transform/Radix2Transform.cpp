#include "transform/FourierTransform.h"

#include "kernels/trigonometry.h"

#include <numbers>
#include <utility>

static void reverseBits(double* re, double* im, int n) {
    int reversed = 0;
    for (int i = 0; i < n - 1; ++i) {
        if (i < reversed) {
            std::swap(re[i], re[reversed]);
            std::swap(im[i], im[reversed]);
        }
        int bit = n / 2;
        while (bit <= reversed) {
            reversed -= bit;
            bit /= 2;
        }
        reversed += bit;
    }
}

// Joins transforms of length half, two at a time. (ur, ui) = exp(sign i pi j / half).
static void radix2Stage(double* re, double* im, int n, int half, double sign) {
    const double theta = std::numbers::pi / half;
    const double c = cosine(theta), s = sign * sine(theta);
    double ur = 1.0, ui = 0.0;
    for (int j = 0; j < half; ++j) {
        for (int i = j; i < n; i += 2 * half) {
            const int p = i + half;
            const double tr = ur * re[p] - ui * im[p];
            const double ti = ui * re[p] + ur * im[p];
            re[p] = re[i] - tr;
            im[p] = im[i] - ti;
            re[i] += tr;
            im[i] += ti;
        }
        const double next = c * ur - s * ui;
        ui = c * ui + s * ur;
        ur = next;
    }
}

// Decimation in time (J. W. Cooley, J. W. Tukey, Math. Comput. 19 (1965) 297-301).
int FourierTransform::radix2Transform(double* re, double* im, int n, double sign) {
    reverseBits(re, im, n);
    for (int half = 1; half < n; half *= 2) {
        radix2Stage(re, im, n, half, sign);
    }
    if (sign == 1.0) {
        for (int i = 0; i < n; ++i) {
            re[i] /= n;
            im[i] /= n;
        }
    }
    return n;
}
