#pragma once

#include <string>
#include <vector>

namespace kernels {

struct KernelInput {
    std::string name;
    std::vector<double> values;
};

// What kernels are tried on: noise, wide noise (from 2^-600 to 2^600), and oddities, which is noise
// mixed with signed zeros, subnormal and very large numbers, infinities and NaNs. Made by integer
// arithmetic alone: the same values on every machine, with every library.
const std::vector<KernelInput>& kernelInputs();

}  // namespace kernels
