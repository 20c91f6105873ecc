#include "workbench/calls/sweepCall.h"

#include "workbench/analysis/ExponentialSweep.h"
#include "workbench/terminal/SweepOptions.h"
#include "workbench/terminal/values.h"

Signal sweepOf(const CallOptions& options) {
    SweepOptions sweep;
    readOptions(
        "sweep", options, [&](CLI::App& command) { sweep.addTo(command); }, [&] { sweep.check(); });
    const auto [from, to] = rangeOf(sweep.frequencies);
    Signal signal{{}, exponentialSweep(from, to, sweep.seconds, sweep.rate, sweep.fade)};
    signal.info.source = SourceName("sweep");
    signal.info.channels = 1;
    signal.info.samples = std::ssize(signal.interleaved);
    signal.info.rate = sweep.rate;
    return signal;
}
