#include "workbench/treatment/Choice.h"

#include "workbench/treatment/Choosing.h"

#include <fmt/format.h>

bool isChosen(const FendraSettings& given, const LeftToData& left, const Treatment& wanted) {
    return left.any() || wanted.automatic || wanted.uncertainty || wanted.curve ||
           wanted.oversampling == 0 || given.method == FendraSettings::regularized;
}

Choice chooseFor(const Question& question, const FendraSettings& given, const LeftToData& left,
                 const Treatment& wanted) {
    return Choosing(question, given, left, wanted).choose();
}

std::optional<std::string> Choice::contradictedBy(double lastError, double loopCount) const {
    const std::int64_t steps = static_cast<std::int64_t>(loopCount) - 1;
    if (!curve || curve->predicts(lastError, steps)) {
        return std::nullopt;
    }
    return fmt::format(
        "internal error: after {} steps the module reports the last error {:.9g}, and {:.9g} was "
        "predicted; do not rely on the choice, and report this",
        steps, lastError, curve->at(static_cast<double>(steps)).error);
}
