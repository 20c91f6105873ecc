#include "workbench/methods/Method.h"

extern const Method regularizedMethod = {
    .word = "regularized",
    .about =
        "divides the spectra, and gives up what the noise would drown: for any kernel with noise; "
        "made of three runs of the module",
    .direction = FendraSettings::deconvolution,
    .code = FendraSettings::regularized,
    .control = 0,
    .equalLengths = false,
    .lag = 0,
    .numbers = {},
    .multiplyAdds = negligibleWork,
    .bytes = negligibleMemory,
    .onOverflow = "the computation overflowed; scale the signals",
    .remarks = noRemarks,
};
