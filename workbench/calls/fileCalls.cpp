#include "workbench/calls/fileCalls.h"

#include "workbench/files/signalFiles.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/OutputOptions.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstddef>

Signal readFile(const std::string& path, const CallOptions& options) {
    InputOptions input;
    ReadOptions reading;
    readOptions(
        "convert", options, [&](CLI::App& command) { input.addReadingTo(command); },
        [&] { reading = input.reading(); });
    return Signal::of(*openSignal(SourceName(path), reading));
}

void writeFile(const std::string& path, const CallSignal& signal,
               const std::vector<std::string>& names, const CallOptions& options) {
    OutputOptions output;
    InputOptions input;
    readOptions(
        "convert", options,
        [&](CLI::App& command) {
            output.addWithoutFileTo(command);
            input.addNonfiniteTo(command);
            input.addLossyTo(command);
        },
        [&] { output.file = path; });
    const Signal whole = Signal::of(*sourceOf(signal, input.allowNonfinite).open());
    if (!names.empty() && names.size() != static_cast<std::size_t>(signal.channels)) {
        throw Failure(fmt::format("{} names for {} channels; give as many as there are channels",
                                  names.size(), signal.channels));
    }
    SignalTarget target = output.target();
    target.lossy = input.lossy;
    const std::unique_ptr<SignalWriter> writer = createSignal(
        target, {signal.channels, signal.samples, signal.rate, signal.axis, names, {}, {}});
    writer->write(whole.interleaved.data(), signal.samples);
    writer->finish({});
}
