#include "workbench/module/ModuleDriver.h"

#include "host/B_BasisModule.h"
#include "host/ProcessCode.h"
#include "host/RunObserver.h"
#include "platform/Windows1252.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/ModuleLibrary.h"

#include <fmt/format.h>

#include <cstddef>
#include <new>
#include <optional>

// A port may take several kinds of signal; the first one says enough.
static bool isOf(const B_BasisModule& module, PORTTYPE side, int port, const std::string& type) {
    return toUtf8(module.GetPortType(side, port)).starts_with(type + " ");
}

static bool isSignal(const B_BasisModule& module, PORTTYPE side, int port) {
    return isOf(module, side, port, "DOUBLE[]");
}

ModuleDriver::ModuleDriver(B_BasisModule& driven) : module(driven) {
    const bool suits = module.GetNoInput() == 2 && isSignal(module, inputPort, 0) &&
                       isSignal(module, inputPort, 1) && module.GetNoOutput() > 0 &&
                       isSignal(module, outputPort, 0);
    if (!suits) {
        throw Failure(
            fmt::format("{} does not take two signals and give one; choose another module with "
                        "--module, or other settings",
                        moduleName(module)));
    }
    connect();
}

void ModuleDriver::connect() {
    module.DeleteStreams();
    for (int port = 0; port < module.GetNoInput(); ++port) {
        inputs.push_back(std::make_unique<BlockStream>());
        module.SetInputStream(port, inputs.back().get());
    }
    for (int port = 0; port < module.GetNoOutput(); ++port) {
        outputs.push_back(std::make_unique<BlockStream>());
        module.AddOutputStream(port, outputs.back().get());
        if (isOf(module, outputPort, port, "DOUBLE")) {
            numberPorts.push_back(port);
        }
    }
}

ModuleDriver::~ModuleDriver() {
    module.DeleteStreams();
}

void ModuleDriver::feed(int input, const double* samples, std::int64_t count, bool last) {
    inputs[static_cast<std::size_t>(input)]->writeBlock(
        last ? BlockHeader::last : BlockHeader::moreFollow, samples, static_cast<int>(count));
}

namespace {

// Passes everything on to the observer before, and keeps the reason of a failure.
class FailureWatch : public RunObserver {
public:
    FailureWatch() : before(install(this)) {}
    FailureWatch(const FailureWatch&) = delete;
    FailureWatch& operator=(const FailureWatch&) = delete;
    ~FailureWatch() override { install(before); }

    bool afterStep(const RunStep& step) override {
        return before == nullptr || before->afterStep(step);
    }
    bool within(const RunPart& part) override { return before == nullptr || before->within(part); }
    void afterFailure(RunFailure why) override {
        reason = why;
        if (before != nullptr) {
            before->afterFailure(why);
        }
    }

    std::optional<RunFailure> reason;

private:
    RunObserver* before;
};

}  // namespace

// A result that no run has written is all NaN, with a code of success: that counts as failed too.
void ModuleDriver::step() {
    const FailureWatch watch;
    module.Init();
    module.Fetch();
    const int code = module.Process();
    module.Done();
    if (watch.reason == RunFailure::memoryExhausted) {
        throw std::bad_alloc();
    }
    if (watch.reason == RunFailure::stopped) {
        throw Stopped("stopped; nothing is written");
    }
    if (code == ProcessCode::lengthsDiffer) {
        throw Failure("this method needs two signals of equal length");
    }
    if (watch.reason == RunFailure::refused) {
        throw Failure("the method refused these signals; choose other settings");
    }
    if (code != ProcessCode::done) {
        throw Failure(fmt::format("the module ended with code {}", code));
    }
}

std::vector<double> ModuleDriver::takeSignal(std::int64_t length) {
    std::vector<double> signal;
    int marker = 0;
    if (!outputs[0]->readBlock(marker, signal) || std::ssize(signal) != length) {
        throw Failure(
            fmt::format("the module gave {} samples where {} were due", signal.size(), length));
    }
    return signal;
}

std::vector<double> ModuleDriver::takeNumbers() {
    std::vector<double> numbers;
    for (const int port : numberPorts) {
        std::vector<double> number;
        int marker = 0;
        if (!outputs[static_cast<std::size_t>(port)]->readBlock(marker, number) ||
            number.size() != 1) {
            throw Failure(fmt::format("the module gave no number on output {}", port));
        }
        numbers.push_back(number[0]);
    }
    return numbers;
}

std::vector<std::string> ModuleDriver::numberNames() const {
    std::vector<std::string> names;
    for (const int port : numberPorts) {
        names.push_back(toUtf8(module.GetOutputName(port)));
    }
    return names;
}
