/* Noise is left to the program: what method, how sharp, and how far off each value may be. */
#include <fendra.h>
#include <math.h>
#include <stdio.h>

enum { samples = 256 };

/* Noise that is the same everywhere: sums of twelve even numbers are nearly normal. */
static double noise(unsigned long* state) {
    double sum = -6.0;
    int i;
    for (i = 0; i < 12; ++i) {
        *state = (*state * 1103515245UL + 12345UL) & 0x7fffffffUL;
        sum += (double)*state / 2147483648.0;
    }
    return sum;
}

int main(void) {
    double truth[samples], kernel[samples], measured[samples];
    const double *value, *lower, *upper;
    unsigned long state = 1;
    int i, k, inside = 0;
    fendra* handle;
    for (i = 0; i < samples; ++i) {
        const double x = (i - 128) / 12.0, y = (i - 10) / 3.0;
        truth[i] = 100.0 * exp(-0.5 * x * x);
        kernel[i] = exp(-0.5 * y * y) / (3.0 * 2.5066282746310002);
    }
    for (i = 0; i < samples; ++i) {
        measured[i] = noise(&state);
        for (k = 0; k < samples; ++k) {
            measured[i] += kernel[k] * truth[(i - k + 10 + samples) % samples];
        }
    }

    handle = fendra_open(NULL);
    fendra_set(handle, "auto", "");
    if (fendra_deconvolve(handle, measured, samples, kernel, samples) != FENDRA_OK ||
        fendra_band(handle, &lower, &upper) != FENDRA_OK || lower == NULL) {
        fprintf(stderr, "fendra: %s\n", fendra_message(handle));
        fendra_close(handle);
        return 1;
    }
    value = fendra_result(handle);
    for (i = 0; i < samples; ++i) {
        inside += lower[i] <= truth[i] && truth[i] <= upper[i];
    }
    printf("%.0f +- %.1f at the peak, which is 100; %d of %d values inside their bounds\n",
           value[128], upper[128] - value[128], inside, samples);
    fendra_close(handle);
    return inside > 0.9 * samples ? 0 : 1;
}
