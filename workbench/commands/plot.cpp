#include "workbench/commands/Command.h"
#include "workbench/commands/PlotOptions.h"
#include "workbench/messages/Printable.h"
#include "workbench/reporting/figures.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

struct PlotCommand {
    std::vector<std::string> files;
    double rate = 0.0;  // 0: from the files
    bool replace = false;
    PlotOptions picture;
    InputOptions input;

    void run() const;

private:
    [[nodiscard]] SharedSignal read(const std::string& file) const;
    [[nodiscard]] std::string words() const;
};

}  // namespace

SharedSignal PlotCommand::read(const std::string& file) const {
    auto signal =
        std::make_shared<Signal>(Signal::of(*openSignal(SourceName(file), input.reading())));
    if (signal->info.rate == 0.0 && rate > 0.0) {
        signal->info.rate = rate;
    }
    return signal;
}

// Without the name of the picture.
std::string PlotCommand::words() const {
    std::string line = "fendra plot";
    for (const std::string& file : files) {
        line += " " + quoted(file);
    }
    return line + (rate == 0.0 ? "" : fmt::format(" --rate {}", rate)) + input.words();
}

void PlotCommand::run() const {
    if (std::count(files.begin(), files.end(), "-") > 1) {
        throw CLI::ValidationError("-", "standard input serves one file only");
    }
    const std::unique_ptr<PlotFile> file = picture.open(replace);
    std::vector<SharedSignal> signals;
    for (const std::string& name : files) {
        signals.push_back(read(name));
    }
    Figure figure = figureOf(signals);
    figure.caption.insert(figure.caption.begin(), printable(words()));
    file->write(figure, picture.order(figure));
}

static void addPlot(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "plot",
        "Paint signals and their spectra into a picture.\n"
        "No sample is hidden: a column of pixels shows the lowest and the highest of its samples. "
        "NaN is a gap, and an infinity stands on the edge. The picture is the same on every "
        "machine with the same libraries and fonts, with or without a display.");
    command.group(groupWhere(Offer::here.windows, command.get_group()));
    command.footer(
        "  fendra plot speech.wav -o speech.png\n"
        "  fendra plot measured.csv restored.csv -o both.svg\n"
        "  fendra plot ecg.csv -o beats.pdf --from 1 --to 3 --size 800x400\n");
    const auto plot = std::make_shared<PlotCommand>();
    command.add_option("FILES", plot->files, signalFileText)->required()->type_name("FILE ...");
    plot->picture.addAsOutputTo(command);
    command.add_flag("--force", plot->replace, forceText);
    plot->input.addReadingTo(command);
    command.add_option("--rate", plot->rate, rateText)
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ")
        ->group("Signals");
    command.callback([plot] { plot->run(); });
}

extern const Command plotCommand = {addPlot};
