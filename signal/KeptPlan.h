#pragma once

#include <memory>

class FourierPlan;

// The plan of the transforms of one length, kept for the next run of that length. It is made when a
// length comes that is not the last one; the plan before it is gone by then.
class KeptPlan {
public:
    KeptPlan();
    ~KeptPlan();
    // A copy starts without a plan.
    KeptPlan(const KeptPlan& /*other*/);
    KeptPlan& operator=(const KeptPlan& /*other*/);

    // Throws std::bad_alloc; then no plan is kept.
    FourierPlan& of(int length);

private:
    std::unique_ptr<FourierPlan> plan;
};
