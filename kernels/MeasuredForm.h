#pragma once

#include "kernels/InstructionSet.h"

#include <atomic>
#include <vector>

namespace kernels {

// Which form of a kernel to run. The widest instruction set need not be the fastest one: there are
// processors that have the wide registers and take every operation on them in two halves. So each
// form does a small piece of work a few times, once in the life of the process, and the one that
// was fastest is taken from then on.
class MeasuredForm {
public:
    // Does a fixed piece of work of some microseconds in the form for a set. Throws nothing.
    using Trial = void (*)(InstructionSet set);

    explicit MeasuredForm(Trial someTrial) : trial(someTrial) {}

    // The set to run on: the one that has been chosen for all kernels, or else the fastest. While
    // that is not known yet, work of fewer multiply-adds than a trial takes runs on the widest.
    InstructionSet setFor(double multiplyAdds);

private:
    InstructionSet measure();

    Trial trial;
    static constexpr int unknown = -1;
    std::atomic<int> fastest = unknown;
};

// A kernel that chooses its form, and the set that it runs on.
struct FormInUse {
    const char* kernel;
    InstructionSet set;
};

// All of them, in the order of their names; those that have not been measured yet are now. Other
// kernels run on instructionSet().
std::vector<FormInUse> formsInUse();

}  // namespace kernels
