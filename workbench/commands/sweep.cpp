#include "workbench/analysis/ExponentialSweep.h"
#include "workbench/commands/Command.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/reporting/figures.h"
#include "workbench/reporting/pages.h"
#include "workbench/signals/SampleDigest.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Sweep {
    std::string frequencies;
    double seconds = 0.0, rate = 0.0, fade = 0.01;
    OutputOptions output;
    PageOptions page;
};

}  // namespace

static void require(bool holds, const char* option, const std::string& complaint) {
    if (!holds) {
        throw CLI::ValidationError(option, complaint);
    }
}

static void check(const Sweep& sweep) {
    const auto [from, to] = rangeOf(sweep.frequencies);
    const double samples = sweep.seconds * sweep.rate, half = sweep.seconds / 2.0;
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    require(from > 0.0 && to <= sweep.rate / 2.0, "--frequencies",
            fmt::format("\"{}\" must lie above 0 and up to half the sampling rate, {} Hz",
                        sweep.frequencies, sweep.rate / 2.0));
    require(samples >= 2.0 && samples <= most, "--seconds",
            fmt::format("{} s at {} Hz are not from 2 to {:.0f} samples; give another time",
                        sweep.seconds, sweep.rate, most));
    require(sweep.fade <= half, "--fade",
            fmt::format("{} s is more than half of the sweep; give at most {}", sweep.fade, half));
}

static void writePage(PageFile& file, const Sweep& sweep, const ResultInfo& info,
                      const std::vector<double>& samples) {
    SampleDigest digest;
    digest.add(samples.data(), samples.size());
    const auto [from, to] = rangeOf(sweep.frequencies);
    const SourceName name = SourceName::ofOutput(sweep.output.file);
    Signal signal{{}, samples};
    signal.info.source = name;
    signal.info.channels = info.channels;
    signal.info.samples = info.samples;
    signal.info.rate = info.rate;
    const SweepRecord record{info.notes.at(0), name,       from,         to,          sweep.seconds,
                             sweep.fade,       sweep.rate, info.samples, digest.hex()};
    file.write(pageOf(record), figureOf({std::make_shared<const Signal>(std::move(signal))}));
}

static void run(const Sweep& sweep) {
    check(sweep);
    const std::unique_ptr<PageFile> pageFile = sweep.page.open(sweep.output.replace);
    const auto [from, to] = rangeOf(sweep.frequencies);
    const std::vector<double> samples =
        exponentialSweep(from, to, sweep.seconds, sweep.rate, sweep.fade);
    const SignalTarget target = sweep.output.target();
    ResultInfo info;
    info.samples = static_cast<std::int64_t>(samples.size());
    info.rate = sweep.rate;
    info.notes = {fmt::format("fendra sweep --frequencies {} --seconds {} --rate {} --fade {}{}",
                              sweep.frequencies, sweep.seconds, sweep.rate, sweep.fade,
                              sweep.output.words())};
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
    const auto add = [&](const char* name, auto& value, const char* text, const char* type) {
        return command.add_option(name, value, text)->type_name(type);
    };
    add("--frequencies", sweep->frequencies, "first and last frequency, in Hz", "FROM:TO")
        ->check(rangeValue("range of frequencies"))
        ->required();
    add("--seconds", sweep->seconds, "duration", "S")->check(positiveNumber("time"))->required();
    add("--rate", sweep->rate, "sampling rate", "HZ")
        ->check(positiveNumber("sampling rate"))
        ->required();
    add("--fade", sweep->fade, "seconds of fading in, and of fading out", "S")
        ->check(zeroOrPositive("time"))
        ->capture_default_str();
    sweep->output.addTo(command, "file; the ending chooses the format");
    command.get_option("--output")->required();
    sweep->page.addTo(command);
    command.callback([sweep] { run(*sweep); });
}

extern const Command sweepCommand = {addSweep};
