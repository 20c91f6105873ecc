#pragma once

#include "workbench/analysis/IterationCurve.h"
#include "workbench/analysis/RegularizedCurve.h"

#include <cstdint>
#include <optional>
#include <vector>

// Where the criterion of a curve is smallest. 200 strengths from the first to the last, in equal
// ratios, find the valley; points between the lowest one and its neighbours its floor, until no
// strength that can be told apart is left between them.
struct CurveSearch {
    CurvePoint best;
    std::vector<CurvePoint> points;  // all that were looked at, by rising parameter
};

// Whole numbers of steps, from 1 to last, which is 1 or more.
CurveSearch searchSteps(const IterationCurve& curve, const std::optional<NoiseModel>& noise,
                        std::int64_t last);

inline constexpr double weakestStrength = 1e-14, greatestStrength = 1e8;

// Strengths of three decimal digits, from weakestStrength to greatestStrength: the valley is flat,
// and so the choice does not hang on the last bits of a sum, and is short to write.
CurveSearch searchStrength(const RegularizedCurve& curve, const std::optional<NoiseModel>& noise);
