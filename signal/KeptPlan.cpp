#include "signal/KeptPlan.h"

#include "transform/FourierPlan.h"

KeptPlan::KeptPlan() = default;
KeptPlan::~KeptPlan() = default;
KeptPlan::KeptPlan(const KeptPlan& /*other*/) {}

KeptPlan& KeptPlan::operator=(const KeptPlan& /*other*/) {
    return *this;
}

FourierPlan& KeptPlan::of(int length) {
    if (plan == nullptr || plan->length() != length) {
        plan.reset();
        plan = std::make_unique<FourierPlan>(length);
    }
    return *plan;
}
