/* Two lines of a spectrum, blurred by a detector, are made sharp again; whoever waits sees how far
   it has come, and could stop it. */
#include <fendra.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

enum { samples = 200 };

/* Gaussian peak of unit sum about a sample. */
static double peak(int i, double middle, double width) {
    const double x = (i - middle) / width;
    return exp(-0.5 * x * x) / (width * sqrt(2.0 * 3.14159265358979323846));
}

static int tell(void* with, double share) {
    *(double*)with = share; /* 0 to 1 */
    return 0;               /* anything else: stop */
}

int main(void) {
    double measured[samples], kernel[samples], reached = 0.0;
    const double* sharp;
    int i, ok;
    for (i = 0; i < samples; ++i) {
        measured[i] = 500.0 * peak(i, 90.0, 5.0) + 300.0 * peak(i, 104.0, 5.0);
        kernel[i] = peak(i, 20.0, 4.5);
    }

    fendra* handle = fendra_open(NULL);
    fendra_observe(handle, tell, &reached);
    if (fendra_set(handle, "method", "van-cittert") != FENDRA_OK ||
        fendra_set(handle, "max-iterations", "60") != FENDRA_OK) {
        fprintf(stderr, "fendra: %s\n", fendra_message(handle));
        fendra_close(handle);
        return 1;
    }
    if (fendra_deconvolve(handle, measured, samples, kernel, samples) != FENDRA_OK) {
        fprintf(stderr, "fendra: %s\n", fendra_message(handle));
        fendra_close(handle);
        return 1;
    }

    /* The lines were 14 samples apart and 5 wide: now there is a valley between them. */
    sharp = fendra_result(handle);
    printf("measured: %4.1f %4.1f %4.1f\n", measured[90], measured[97], measured[104]);
    printf("sharp:    %4.1f %4.1f %4.1f\n", sharp[90], sharp[97], sharp[104]);
    ok = sharp[97] < 0.2 * sharp[104] && sharp[104] < sharp[90] && reached > 0.9 &&
         strstr(fendra_record(handle), "\"method\": \"van-cittert\"") != NULL;
    fendra_close(handle);
    return ok ? 0 : 1;
}
