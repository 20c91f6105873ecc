#include "kernels/contract/KernelCase.h"
#include "kernels/radix2.h"
#include "kernels/trigonometry.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
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

// On zeros of the samples' signs, without and with an infinity among them. Only there it shows
// whether a product with a twiddle of 0 was left out.
static std::vector<double> runRadix2OnZeros(Form form, int size, Input& input) {
    const int n = static_cast<int>(std::bit_floor(static_cast<unsigned>(size)));
    const auto zeroOf = [](double x) { return std::copysign(0.0, x); };
    std::vector<double> results;
    for (const double sign : {-1.0, 1.0}) {
        for (const double special : {0.0, std::numeric_limits<double>::infinity()}) {
            Samples re = input.take(n), im = input.take(n);
            std::transform(re.data(), re.data() + n, re.data(), zeroOf);
            std::transform(im.data(), im.data() + n, im.data(), zeroOf);
            im.data()[n / 3] = special;
            (form == Form::fast ? radix2 : plain::radix2)(re.data(), im.data(), n, sign);
            append(results, re);
            append(results, im);
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

// The lengths of radix2 take each of its paths: up to 2^11 in a buffer, with an even and an odd
// number of stages; up to 2^14 in blocks of one kind; then in blocks of two. The longest needs a
// recurrence that the compiler has not run.
std::vector<KernelCase> transformCases() {
    return {{"radix2",
             {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, 1 << 18},
             runRadix2},
            {"radix2OnZeros", {1, 64, 128, 256, 512, 2048, 4096, 8192, 1 << 15}, runRadix2OnZeros},
            {"sinesAndCosines", everySizeAnd({}), runSinesAndCosines}};
}

}  // namespace kernels
