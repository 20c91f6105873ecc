#include "workbench/analysis/Spectrum.h"

#include "transform/FourierTransform.h"

#include <utility>

Spectrum spectrumOf(const std::vector<double>& samples, std::size_t length) {
    Spectrum spectrum{samples, std::vector<double>(length)};
    spectrum.re.resize(length);
    FourierTransform().transform(spectrum.re.data(), spectrum.im.data(), static_cast<int>(length),
                                 -1);
    return spectrum;
}

std::vector<double> samplesOf(Spectrum spectrum) {
    FourierTransform().transform(spectrum.re.data(), spectrum.im.data(),
                                 static_cast<int>(spectrum.re.size()), 1);
    return std::move(spectrum.re);
}

std::vector<double> periodicConvolution(const std::vector<double>& first,
                                        const std::vector<double>& second) {
    Spectrum product = spectrumOf(first, first.size());
    const Spectrum factor = spectrumOf(second, first.size());
    for (std::size_t j = 0; j < first.size(); ++j) {
        const double re = product.re[j] * factor.re[j] - product.im[j] * factor.im[j];
        product.im[j] = product.re[j] * factor.im[j] + product.im[j] * factor.re[j];
        product.re[j] = re;
    }
    return samplesOf(std::move(product));
}
