/* A signal is smoothed by a kernel of three samples: the end of it wraps round, unless zeros are
   appended. */
#include <fendra.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

/* What is off among n samples, at most. */
static double off(const double* samples, const double* expected, size_t n) {
    double most = 0.0;
    size_t i;
    for (i = 0; i < n; ++i) {
        most = fmax(most, fabs(samples[i] - expected[i]));
    }
    return most;
}

int main(void) {
    const double signal[] = {0.0, 4.0, 0.0, 0.0, 8.0}, kernel[] = {0.25, 0.5, 0.25};
    const double periodic[] = {3.0, 2.0, 1.0, 2.0, 4.0}; /* about the middle of the kernel */
    const double linear[] = {0.0, 1.0, 2.0, 1.0, 2.0, 4.0, 2.0};
    int ok = 0;

    fendra* handle = fendra_open(NULL);
    if (fendra_convolve(handle, signal, 5, kernel, 3) == FENDRA_OK) {
        ok = fendra_length(handle) == 5 && off(fendra_result(handle), periodic, 5) < 1e-12;
    }
    fendra_set(handle, "pad", "");
    fendra_set(handle, "origin", "none"); /* the result begins where the signal does */
    if (fendra_convolve(handle, signal, 5, kernel, 3) == FENDRA_OK) {
        ok = ok && fendra_length(handle) == 7 && off(fendra_result(handle), linear, 7) < 1e-12;
    }
    if (strcmp(fendra_message(handle), "") != 0) {
        fprintf(stderr, "fendra: %s\n", fendra_message(handle));
    }
    fendra_close(handle);
    puts(ok ? "convolved" : "not what it should be");
    return ok ? 0 : 1;
}
