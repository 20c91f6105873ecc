#pragma once

#include "kernels/WorkWatch.h"
#include "transform/FourierTransform.h"

#include <vector>

// Transform number 0, 1 or 2 of the three that a run in the frequency domain takes.
inline void transformThird(int number, std::vector<double>& re, std::vector<double>& im, int sign) {
    const kernels::WorkPart third(number / 3.0, (number + 1) / 3.0);
    FourierTransform().transform(re.data(), im.data(), static_cast<int>(re.size()), sign);
}
