#include "workbench/jobs/CommonStep.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

CommonStep commonStep(const SignalInfo& a, const SignalInfo& b, double given) {
    const double known = a.rate > 0.0 ? a.rate : b.rate;
    const auto differ = [](double x, double y) {
        return x > 0.0 && y > 0.0 && std::abs(x - y) > 1e-6 * std::max(x, y);
    };
    if (differ(a.rate, b.rate)) {
        throw Failure(
            fmt::format("{} is sampled at {} Hz and {} at {} Hz; resample one of them first",
                        a.source.shown, a.rate, b.source.shown, b.rate));
    }
    if (differ(known, given)) {
        throw Failure(fmt::format("--rate {} contradicts {} Hz in {}; leave it out", given, known,
                                  a.rate > 0.0 ? a.source.shown : b.source.shown));
    }
    return {known > 0.0 ? known : given};
}
