#include "workbench/methods/Method.h"

extern const Method frequencyDomainMethod = {
    .word = "frequency",
    .about = "multiplies spectra; fast at any length",
    .direction = FendraSettings::convolution,
    .code = FendraSettings::frequencyDomain,
    .control = 1024,
    .equalLengths = false,
    .lag = 0,
    .numbers = {},
    .multiplyAdds = negligibleWork,
    .bytes = negligibleMemory,
    .onOverflow = "the computation overflowed; scale the signals",
    .remarks = noRemarks,
};
