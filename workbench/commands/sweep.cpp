#include "workbench/analysis/ExponentialSweep.h"
#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/reporting/figures.h"
#include "workbench/reporting/pages.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/terminal/SweepOptions.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

struct Sweep {
    SweepOptions options;
    OutputOptions output;
    PageOptions page;
};

}  // namespace

static void writePage(PageFile& file, const Sweep& sweep, const ResultInfo& info,
                      const std::vector<double>& samples) {
    SampleDigest digest;
    digest.add(samples.data(), samples.size());
    const SweepOptions& given = sweep.options;
    const auto [from, to] = rangeOf(given.frequencies);
    const SourceName name = SourceName::ofOutput(sweep.output.file);
    Signal signal{{}, samples};
    signal.info.source = name;
    signal.info.channels = info.channels;
    signal.info.samples = info.samples;
    signal.info.rate = info.rate;
    const SweepRecord record{info.notes.at(0), name,       from,         to,          given.seconds,
                             given.fade,       given.rate, info.samples, digest.hex()};
    file.write(pageOf(record), figureOf({std::make_shared<const Signal>(std::move(signal))}));
}

static void run(const Sweep& sweep) {
    const SweepOptions& given = sweep.options;
    given.check();
    const std::unique_ptr<PageFile> pageFile = sweep.page.open(sweep.output.replace);
    const auto [from, to] = rangeOf(given.frequencies);
    const std::vector<double> samples =
        exponentialSweep(from, to, given.seconds, given.rate, given.fade);
    const SignalTarget target = sweep.output.target();
    ResultInfo info;
    info.samples = static_cast<std::int64_t>(samples.size());
    info.rate = given.rate;
    info.notes = {"fendra sweep" + given.words() + sweep.output.words()};
    const std::unique_ptr<SignalWriter> writer = createSignal(target, info);
    writer->write(samples.data(), info.samples);
    writer->finish({});
    if (!sweep.output.quiet) {
        fmt::print(sweep.output.file == "-" ? stderr : stdout, "{}: {}\n", target.name.shown,
                   describe(info.channels, info.samples, info.rate));
        if (const std::string lost = withoutPlace(target, info); !lost.empty()) {
            fmt::print("remark: {} has no place for {}\n", target.name.shown, lost);
        }
    }
    if (pageFile) {
        writePage(*pageFile, sweep, info, samples);
    }
}

static void addSweep(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "sweep",
        "Make a sine whose frequency grows exponentially.\n"
        "Played into a room or a device, it measures the impulse response: deconvolve the "
        "recording by it.");
    command.footer(
        "  fendra sweep --frequencies 50:7600 --seconds 4 --rate 16000 -o sweep.wav\n"
        "  fendra deconvolve recorded.wav sweep.wav --auto --frequencies 60:7400 -o room.wav\n");
    const auto sweep = std::make_shared<Sweep>();
    sweep->options.addTo(command);
    sweep->output.addTo(command, "file; the ending chooses the format");
    command.get_option("--output")->required();
    sweep->page.addTo(command);
    command.callback([sweep] { run(*sweep); });
}

extern const Command sweepCommand = {addSweep};
