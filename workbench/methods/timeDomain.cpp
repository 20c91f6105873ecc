#include "workbench/methods/Method.h"

// Each sample of the result takes one multiply-add for each sample of the shorter signal.
static double work(double length, double shorter, const FendraSettings& /*settings*/) {
    return length * shorter;
}

extern const Method timeDomainMethod = {
    .word = "time",
    .about = "sums in the time domain; the result comes one sample late",
    .direction = FendraSettings::convolution,
    .code = FendraSettings::timeDomain,
    .control = 1023,
    .equalLengths = false,
    .lag = 1,
    .numbers = {},
    .multiplyAdds = work,
    .bytes = negligibleMemory,
    .onOverflow = "the computation overflowed; scale the signals",
    .remarks = noRemarks,
};
