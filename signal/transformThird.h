#pragma once

#include "kernels/WorkWatch.h"
#include "transform/FourierPlan.h"

#include <vector>

// Transform number 0, 1 or 2 of the three that a run in the frequency domain takes.
inline void transformThird(int number, FourierPlan& plan, std::vector<double>& re,
                           std::vector<double>& im, int sign) {
    const kernels::WorkPart third(number / 3.0, (number + 1) / 3.0);
    plan.transform(re.data(), im.data(), sign);
}
