#include "transform/HartleyTransform.h"

#include "kernels/hartley.h"

void HartleyTransform::hartley(double* f, int n, int normalise) {
    ::hartley(f, n, normalise);
}
