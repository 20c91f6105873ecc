#include "kernels/trigonometry.h"

#include "kernels/vectors.h"

namespace kernels {

void plain::sinesAndCosines(const double* angles, int count, double* sines, double* cosines) {
    for (int i = 0; i < count; ++i) {
        sineAndCosine<1>(angles[i], sines[i], cosines[i]);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void vectorsOfAngles(const double* angles, int count,
                                                          double* sines, double* cosines) {
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        const Vector<lanes> angle = *vectorsAt<lanes>(angles + i);
        Vector<lanes> s, c;
        sineAndCosine<lanes>(angle, s, c);
        *vectorsAt<lanes>(sines + i) = s;
        *vectorsAt<lanes>(cosines + i) = c;
    }
    plain::sinesAndCosines(angles + i, count - i, sines + i, cosines + i);
}

FENDRA_VARIANTS(sinesAndCosinesVariant, vectorsOfAngles)

void sinesAndCosines(const double* angles, int count, double* sines, double* cosines) {
    sinesAndCosinesVariant(angles, count, sines, cosines);
}

}  // namespace kernels
