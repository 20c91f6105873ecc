#include "workbench/methods/Method.h"

#include <fmt/format.h>

static std::vector<std::string> remarks(const Evidence& evidence) {
    std::vector<std::string> all = remarksOnAmplification(evidence);
    const KernelGain& kernel = evidence.kernel;
    if (kernel.lowBins > 0) {
        all.push_back(fmt::format(
            "{} of {} bins of the kernel's spectrum lie below a thousandth of the largest, the "
            "deepest at {:.2g} of it; noise there grows as much",
            kernel.lowBins, kernel.bins, kernel.deepest));
    }
    return all;
}

extern const Method spectralMethod = {
    .word = "spectral",
    .about =
        "divides the spectra: exact where the kernel's spectrum stays well away from zero; "
        "elsewhere it amplifies noise",
    .direction = FendraSettings::deconvolution,
    .code = FendraSettings::frequencyDomain,
    .control = 1024,
    .equalLengths = false,
    .lag = 0,
    .numbers = {},
    .multiplyAdds = negligibleWork,
    .bytes = negligibleMemory,
    .onOverflow = "the computation overflowed; scale the signals",
    .remarks = remarks,
};
