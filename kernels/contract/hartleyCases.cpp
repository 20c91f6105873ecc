#include "kernels/contract/KernelCase.h"
#include "kernels/hartley.h"
#include "kernels/spectra.h"

#include <vector>

namespace kernels {

// Real and imaginary parts, one after the other.
static std::vector<double> joined(Samples& re, Samples& im) {
    std::vector<double> both(re.data(), re.data() + re.size());
    both.insert(both.end(), im.data(), im.data() + im.size());
    return both;
}

static std::vector<double> runHartley(Form form, int size, Input& input, int normalise) {
    Samples f = input.take(size);
    (form == Form::fast ? hartley : plain::hartley)(f.data(), size, normalise);
    return {f.data(), f.data() + size};
}

static std::vector<double> runPairing(Form form, int size, Input& input, int sense) {
    Samples re = input.take(size), im = input.take(size);
    (form == Form::fast ? pairSpectra : plain::pairSpectra)(re.data(), im.data(), size, sense);
    return joined(re, im);
}

static std::vector<double> runProduct(Form form, int size, Input& input) {
    Samples re = input.take(size), im = input.take(size);
    Samples factorRe = input.take(size), factorIm = input.take(size);
    (form == Form::fast ? multiplySpectra : plain::multiplySpectra)(
        re.data(), im.data(), factorRe.data(), factorIm.data(), size);
    return joined(re, im);
}

template <int code>
static std::vector<double> runHartley(Form form, int size, Input& input) {
    return runHartley(form, size, input, code);
}

template <int code>
static std::vector<double> runPairing(Form form, int size, Input& input) {
    return runPairing(form, size, input, code);
}

std::vector<KernelCase> hartleyCases() {
    std::vector<int> powersOfTwo;
    for (int n = 1; n <= 1 << 14; n *= 2) {
        powersOfTwo.push_back(n);
    }
    const std::vector<int> sizes = everySizeAnd({});
    return {{"hartley", powersOfTwo, runHartley<0>},
            {"hartleyNormalised", powersOfTwo, runHartley<1>},
            {"pairing", sizes, runPairing<1>},
            {"inversePairing", sizes, runPairing<-1>},
            {"spectralProduct", sizes, runProduct}};
}

}  // namespace kernels
