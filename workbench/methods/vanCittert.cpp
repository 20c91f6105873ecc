#include "workbench/methods/Method.h"

// A step convolves twice.
static double work(double length, double /*shorter*/, const FendraSettings& settings) {
    return 2.0 * settings.maxIterations * length * length;
}

// The error that the iteration starts from is the energy of its signal.
static std::vector<std::string> remarks(const Evidence& evidence) {
    const double lastError = evidence.numbers[0], loopCount = evidence.numbers[1];
    if (loopCount == 1.0 && evidence.settings.maxIterations > 1) {
        return {
            "the iteration stopped at once: its first step raised the error, and the result is "
            "all zero; try a smaller --convergence, or a smoother kernel"};
    }
    if (!(lastError <= evidence.signalEnergy)) {
        return {
            "the iteration diverged: its error is larger than at the start; try a smaller "
            "--convergence, or --stop-at-minimum on"};
    }
    return {};
}

extern const Method vanCittertMethod = {
    .word = "van-cittert",
    .about = "iterates: for smooth kernels, and robust against noise if it is stopped early",
    .direction = FendraSettings::deconvolution,
    .code = FendraSettings::vanCittert,
    .control = 1027,
    .equalLengths = true,
    .lag = 1,
    .numbers = {"lastError", "loopCount"},
    .multiplyAdds = work,
    .bytes = negligibleMemory,
    .onOverflow = "the iteration diverged; try a smaller --convergence, or --stop-at-minimum on",
    .remarks = remarks,
};
