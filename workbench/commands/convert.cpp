#include "workbench/commands/Command.h"
#include "workbench/jobs/Conversion.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/terminal/InputOptions.h"
#include "workbench/terminal/OutputOptions.h"
#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

namespace {

struct Convert {
    std::string file;
    double rate = 0.0;
    InputOptions input;
    OutputOptions output;

    [[nodiscard]] Conversion conversion() const;
    void run() const;
};

}  // namespace

Conversion Convert::conversion() const {
    OutputOptions options = output;
    options.file = "-";  // it stands before the options
    Conversion conversion{
        fileSource(file, input.reading()), output.target(), rate,
        fmt::format("fendra convert {} {}{}{}{}", quoted(file), quoted(output.file),
                    rate > 0.0 ? fmt::format(" --rate {}", rate) : "", input.words(),
                    options.words())};
    conversion.target.lossy = input.lossy;
    return conversion;
}

void Convert::run() const {
    const Conversion given = conversion();
    const ConversionRecord record = ::run(given);
    if (!output.quiet) {
        std::FILE* const stream = output.file == "-" ? stderr : stdout;
        fmt::print(stream, "{}: {}\n", given.target.name.shown,
                   describe(record.signal.channels, record.signal.samples, record.signal.rate));
        for (const std::string& remark : record.remarks) {
            fmt::print(stream, "remark: {}\n", remark);
        }
    }
}

static void addConvert(CLI::App& program) {
    CLI::App& command = *program.add_subcommand(
        "convert",
        "Write a signal in another format.\n"
        "The samples stay as they are: what would change them, or lose the axis, needs --lossy. "
        "Rate, axis and names go along where the format has a place for them; a remark says what "
        "has none.");
    command.footer(
        "  fendra convert measured.npy measured.csv\n"
        "  fendra convert measured.npy measured.wav --rate 48000\n"
        "  fendra convert speech.wav speech.flac --lossy    floats become integers of 24 bits\n");
    const auto convert = std::make_shared<Convert>();
    command.add_option("IN", convert->file, signalFileText)->required()->type_name("FILE");
    command
        .add_option("OUT", convert->output.file,
                    "file, whose ending chooses the format; - is text on standard output")
        ->required()
        ->type_name("FILE");
    convert->output.addWithoutFileTo(command);
    convert->input.addReadingTo(command);
    command.add_option("--rate", convert->rate, rateText)
        ->check(positiveNumber("sampling rate"))
        ->type_name("HZ")
        ->group("Signals");
    command.callback([convert] { convert->run(); });
}

extern const Command convertCommand = {addConvert};
