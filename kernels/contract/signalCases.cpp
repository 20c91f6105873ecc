#include "kernels/contract/KernelCase.h"
#include "kernels/convolution.h"

#include <algorithm>

namespace kernels {

// A signal and a kernel of about two thirds of its length.
static std::vector<double> runConvolution(Form form, int size, Input& input) {
    const int terms = (2 * size + 1) / 3;
    Samples b = input.take(terms), w = input.take(size + std::max(terms - 1, 0));
    Samples result = input.room(size);
    (form == Form::fast ? convolve : plain::convolve)(w.data(), b.data(), size, terms,
                                                      result.data());
    return {result.data(), result.data() + size};
}

static std::vector<double> runCausalConvolution(Form form, int size, Input& input) {
    Samples x = input.take(size), y = input.take(size), result = input.room(size);
    (form == Form::fast ? convolveCausal : plain::convolveCausal)(x.data(), y.data(), size,
                                                                  result.data());
    return {result.data(), result.data() + size};
}

std::vector<KernelCase> signalCases() {
    return {{"convolution", everySizeAnd({1023, 1024, 1025, 1537}), runConvolution},
            {"causalConvolution", everySizeAnd({640, 641, 1100}), runCausalConvolution}};
}

}  // namespace kernels
