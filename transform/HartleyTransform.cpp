#include "transform/HartleyTransform.h"

#include "kernels/hartley.h"

void HartleyTransform::hartley(double* f, int n, int normalise) {
    kernels::hartley(f, n, normalise);
}
