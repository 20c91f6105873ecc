#include "kernels/contract/KernelCase.h"
#include "kernels/hartley.h"
#include "kernels/hartleyFold.h"
#include "kernels/spectra.h"

#include <algorithm>
#include <cstddef>
#include <utility>
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

static std::vector<double> runScaledProduct(Form form, int size, Input& input) {
    Samples aRe = input.take(size), aIm = input.take(size);
    Samples bRe = input.take(size), bIm = input.take(size);
    Samples re = input.room(size), im = input.room(size);
    (form == Form::fast ? multiplyScaled : plain::multiplyScaled)(
        aRe.data(), aIm.data(), 0.125, bRe.data(), bIm.data(), -1.0, 1.0 / 3, size, re.data(),
        im.data());
    return joined(re, im);
}

// Samples that have room to be folded.
static Samples roomy(Samples samples, Input& input) {
    Samples part = input.room(static_cast<int>(foldRoom(samples.size())));
    std::copy_n(samples.data(), samples.size(), part.data());
    return part;
}

// All n samples, in two steps which meet anywhere.
static std::vector<double> unfolded(Samples& re, Samples& im, int n, const double* tables) {
    std::vector<double> both(static_cast<std::size_t>(2 * n));
    const int middle = 3 * n / 7;
    for (const auto& [first, count] : {std::pair(0, middle), std::pair(middle, n - middle)}) {
        unfold(re.data(), im.data(), n, tables, first, count, both.data() + first,
               both.data() + n + first);
    }
    return both;
}

// With the spectrum as it is and with its conjugate.
static std::vector<double> runFold(Form form, int n, Input& input) {
    Samples fixedRe = roomy(input.take(n), input), fixedIm = roomy(input.take(n), input);
    const auto size = static_cast<std::size_t>(foldSpectrumSize(n));
    std::vector<double> spectrumRe(size), spectrumIm(size);
    std::vector<double> tables(static_cast<std::size_t>(foldTableSize(n)));
    if (form == Form::fast) {
        makeFoldTables(tables.data(), n);
        makeFoldSpectrum(fixedRe.data(), fixedIm.data(), n, tables.data(), spectrumRe.data(),
                         spectrumIm.data());
    } else {
        plain::makeFoldSpectrum(fixedRe.data(), fixedIm.data(), n, spectrumRe.data(),
                                spectrumIm.data());
    }
    std::vector<double> results;
    for (const Fixed fixed : {Fixed::asGiven, Fixed::conjugate}) {
        Samples re = roomy(input.take(n), input), im = roomy(input.take(n), input);
        if (form == Form::fast) {
            foldWithSpectrum(re.data(), im.data(), n, tables.data(), spectrumRe.data(),
                             spectrumIm.data(), fixed);
            const std::vector<double> both = unfolded(re, im, n, tables.data());
            results.insert(results.end(), both.begin(), both.end());
        } else {
            plain::foldWithSpectrum(re.data(), im.data(), n, spectrumRe.data(), spectrumIm.data(),
                                    fixed);
            results.insert(results.end(), re.data(), re.data() + n);
            results.insert(results.end(), im.data(), im.data() + n);
        }
    }
    return results;
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
    // From there on a transform of either parity has stages that leave its pieces.
    std::vector<int> folded = powersOfTwo;
    folded.insert(folded.end(), {1 << 15, 1 << 16});
    const std::vector<int> sizes = everySizeAnd({});
    return {{"hartley", powersOfTwo, runHartley<0>},
            {"hartleyNormalised", powersOfTwo, runHartley<1>},
            {"pairing", sizes, runPairing<1>},
            {"inversePairing", sizes, runPairing<-1>},
            {"spectralProduct", sizes, runProduct},
            {"scaledProduct", sizes, runScaledProduct},
            {"fold", folded, runFold}};
}

}  // namespace kernels
