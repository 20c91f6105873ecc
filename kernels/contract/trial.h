#pragma once

#include "kernels/InstructionSet.h"
#include "kernels/contract/KernelCase.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace kernels {

// Runs both forms of a kernel on kernelInputs() at each of these sizes, the fast form on each of
// these instruction sets and at changing alignments. `take`, if given, gets every result of the
// fast form.
//   returns   the first place at which the forms differ, such as
//             "size 17, index 3, of wide noise with avx2"; empty if they agree.
std::string differenceOfForms(const KernelCase& kernel, const std::vector<int>& sizes,
                              const std::vector<InstructionSet>& sets,
                              const std::function<void(std::span<const double>)>& take = {});

}  // namespace kernels
