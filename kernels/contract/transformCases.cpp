#include "kernels/contract/KernelCase.h"
#include "kernels/radix2.h"
#include "kernels/trigonometry.h"

#include <algorithm>
#include <bit>
#include <numbers>

namespace kernels {

static void append(std::vector<double>& results, Samples& samples) {
    results.insert(results.end(), samples.data(), samples.data() + samples.size());
}

// Of the power of two that is not above size. Whether a twiddle is 0 or -0 shows on zeros alone.
static std::vector<double> runRadix2(Form form, int size, Input& input) {
    const int n = static_cast<int>(std::bit_floor(static_cast<unsigned>(size)));
    std::vector<double> results;
    for (const double sign : {-1.0, 1.0}) {
        Samples re = input.take(n), im = input.take(n);
        for (int trial = 0; trial < 2; ++trial) {
            (form == Form::fast ? radix2 : plain::radix2)(re.data(), im.data(), n, sign);
            append(results, re);
            append(results, im);
            std::fill_n(re.data(), n, -0.0);
            std::fill_n(im.data(), n, 0.0);
        }
    }
    return results;
}

static std::vector<double> runSinesAndCosines(Form form, int size, Input& input) {
    Samples angles = input.take(size), sines = input.room(size), cosines = input.room(size);
    for (int i = 0; i < size; ++i) {
        angles.data()[i] *= 2 * std::numbers::pi;
    }
    (form == Form::fast ? sinesAndCosines : plain::sinesAndCosines)(angles.data(), size,
                                                                    sines.data(), cosines.data());
    std::vector<double> results;
    append(results, sines);
    append(results, cosines);
    return results;
}

// The longest radix2 runs in blocks, and a recurrence that the compiler has not run.
std::vector<KernelCase> transformCases() {
    return {{"radix2",
             {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, 1 << 18},
             runRadix2},
            {"sinesAndCosines", everySizeAnd({}), runSinesAndCosines}};
}

}  // namespace kernels
