#include "library/Session.h"

#include "platform/ArithmeticMode.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/module/ModuleLibrary.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <limits>
#include <new>
#include <utility>

namespace {

// Passes on how far a run has come, until it is told to stop.
class Teller final : public JobObserver {
public:
    Teller(int (*teller)(void* with, double share), void* tellerWith)
        : tell(teller), with(tellerWith) {}

    bool advances(const JobProgress& progress) override {
        stopped = stopped || (tell != nullptr && tell(with, progress.share) != 0);
        return !stopped;
    }

    bool stopped = false;

private:
    int (*const tell)(void* with, double share);
    void* const with;
};

}  // namespace

Session::Session(const char* file) {
    try {
        library = std::make_shared<const ModuleLibrary>(
            file != nullptr ? std::filesystem::path(file) : ModuleLibrary::standardFile());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& reason) {
        refusal = reason.what();
    }
}

void Session::requireModule() const {
    if (library == nullptr) {
        throw Failure(refusal);
    }
}

void Session::set(const std::string& name, const char* value) {
    requireModule();
    options.set(name, value);
    convolution.reset();
    deconvolution.reset();
}

void Session::observe(int (*teller)(void* with, double share), void* tellerWith) {
    tell = teller;
    with = tellerWith;
}

// More samples than can be anywhere are refused before they are read: addresses of present
// processors have 48 bits.
static CallSignal signalOf(const char* name, const Samples& samples) {
    constexpr std::uint64_t bytes = std::uint64_t{1} << 48U;
    constexpr std::uint64_t most =
        std::min<std::uint64_t>(bytes, std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(double);
    constexpr std::uint64_t mostChannels = std::numeric_limits<int>::max();
    const auto [interleaved, count, channels] = samples;
    if (channels > std::min(most, mostChannels) || (channels != 0 && count > most / channels)) {
        throw WrongSignal(
            fmt::format("{}: {} samples in {} channels are more than memory can hold; give the "
                        "length of the array",
                        name, count, channels));
    }
    CallSignal signal;
    signal.name = name;
    signal.interleaved = interleaved;
    signal.samples = static_cast<std::int64_t>(count);
    signal.channels = static_cast<int>(channels);
    return signal;
}

// The caller's thread may round otherwise or flush denormals, and threads of the run would inherit
// that.
void Session::run(std::int32_t direction, const Samples& signal, const Samples& kernel) {
    const StandardArithmetic standard;
    last.reset();
    lastRecord.clear();
    requireModule();
    const CallSignal first = signalOf("signal", signal), second = signalOf("kernel", kernel);
    std::optional<FoldCall>& call =
        direction == FendraSettings::convolution ? convolution : deconvolution;
    if (!call) {
        call.emplace(library, direction, options.of(direction));
    }
    Teller teller(tell, with);
    std::optional<CallResult> result;
    try {
        result = call->run(first, second, teller);
    } catch (const Failure&) {
        if (!teller.stopped) {
            throw;
        }
    }
    if (teller.stopped) {
        throw Stopped("stopped by the observer; there is no result");
    }
    last = std::move(result);
}

const CallResult& Session::requireResult() const {
    if (!last) {
        throw WrongSignal("there is no result; convolve or deconvolve first");
    }
    return *last;
}

const std::string& Session::record() {
    const CallResult& result = requireResult();
    if (lastRecord.empty()) {
        const StandardArithmetic standard;
        lastRecord = result.record();
    }
    return lastRecord;
}
