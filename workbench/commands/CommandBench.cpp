#include "workbench/commands/CommandBench.h"

#include "host/B_BasisModule.h"
#include "workbench/commands/CompareCommand.h"
#include "workbench/commands/FoldCommand.h"
#include "workbench/desktop/SettingsEditor.h"
#include "workbench/files/SourcePart.h"
#include "workbench/jobs/saveOutcome.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/methods/Method.h"
#include "workbench/module/FendraModule.h"
#include "workbench/module/StoredGraph.h"
#include "workbench/reporting/figures.h"
#include "workbench/system/fileNames.h"
#include "workbench/terminal/complaint.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <utility>

using Words = FoldBench::Words;

namespace {

// A command with the words that it was given. What is wrong with them is a Failure, in the words of
// the command line.
template <typename Command>
class Parsed {
public:
    // add: adds arguments and options of the command to a subcommand.
    template <typename Add>
    Parsed(Command parsedCommand, Words words, const Add& add)
        : command(std::move(parsedCommand)), given(std::move(words)) {
        add(command, *program.add_subcommand(given.front()));
        guarded([this] { program.parse(Words(given.rbegin(), given.rend())); });
    }
    Parsed(const Parsed&) = delete;
    Parsed& operator=(const Parsed&) = delete;
    ~Parsed() = default;

    template <typename Action>
    auto guarded(const Action& action) const {
        try {
            return action();
        } catch (const CLI::ParseError& error) {
            throw Failure(complaint(program, error, given));
        }
    }

    Command command;

private:
    Words given;
    CLI::App program{"", "fendra"};
};

// Convolve or deconvolve, as the first of the words says, with its job.
struct ParsedFold : Parsed<FoldCommand> {
    explicit ParsedFold(const Words& words)
        : Parsed(FoldCommand(words.front(), words.front() == "convolve"
                                                ? FendraSettings::convolution
                                                : FendraSettings::deconvolution),
                 words, [](FoldCommand& own, CLI::App& to) { own.addTo(to, "SIGNAL", "KERNEL"); }),
          library(command.library()),
          job(guarded([this] { return command.job(library); })) {}

    ModuleLibrary library;
    FoldJob job;
};

}  // namespace

Words CommandBench::withModule(const Words& words) const {
    Words all = words;
    if (!module.empty()) {
        all.insert(all.end(), {"--module", module});
    }
    return all;
}

// A file that is not what it was is read again; one that is gone is missed by whoever opens it.
std::shared_ptr<const Signal> CommandBench::signalOf(const SignalSource& source,
                                                     const std::string& readingWords) {
    const std::filesystem::path file = pathOf(SourcePart(source.name.path).file);
    std::error_code ignored;
    const auto time = std::filesystem::last_write_time(file, ignored);
    const std::uintmax_t size = std::filesystem::file_size(file, ignored);
    const std::string key = source.name.path + readingWords;
    {
        const std::lock_guard lock(guard);
        const auto found = kept.find(key);
        if (!ignored && found != kept.end() && found->second.time == time &&
            found->second.size == size) {
            return found->second.signal;
        }
    }
    auto signal = std::make_shared<const Signal>(Signal::of(*source.open()));
    constexpr std::size_t most = 8;
    const std::lock_guard lock(guard);
    if (kept.size() >= most) {
        kept.clear();
    }
    kept[key] = {time, size, signal};
    return signal;
}

// The file that is there stands for one that is not, while the words are read.
FoldBench::Answer CommandBench::look(const Words& words) {
    Words whole = withModule(words);
    for (const std::size_t place : {std::size_t{1}, std::size_t{2}}) {
        if (whole.at(place).empty()) {
            whole[place] = words.at(3 - place);
        }
    }
    const ParsedFold parsed(whole);
    const std::string reading = parsed.command.readingWords();
    Answer answer;
    std::vector<SharedSignal> there;
    if (!words[1].empty()) {
        answer.signal = there.emplace_back(signalOf(parsed.job.first, reading));
    }
    if (!words[2].empty()) {
        answer.kernel = there.emplace_back(signalOf(parsed.job.second, reading));
    }
    answer.figure = figureOf(there);
    return answer;
}

FoldBench::Answer CommandBench::run(const Words& words, JobObserver& observer) {
    ParsedFold parsed(withModule(words));
    const std::string reading = parsed.command.readingWords();
    Answer answer;
    answer.signal = signalOf(parsed.job.first, reading);
    answer.kernel = signalOf(parsed.job.second, reading);
    parsed.job.first = sourceOf(answer.signal);
    parsed.job.second = sourceOf(answer.kernel);
    answer.outcome = ::run(parsed.job, parsed.library, observer);
    answer.outcome.record.output = answer.outcome.result.info.source;  // it has no file
    answer.figure = figureOf(answer.signal, answer.kernel, answer.outcome);
    return answer;
}

FoldBench::Compared CommandBench::compare(const Words& words, JobObserver& observer) {
    const Parsed<CompareCommand> parsed(
        CompareCommand(), withModule(words),
        [](CompareCommand& command, CLI::App& to) { command.addTo(to); });
    const CompareJob job = parsed.guarded([&] { return parsed.command.job(); });
    Compared compared;
    compared.outcomes = ::run(job, parsed.command.library(), observer);
    compared.figure = figureOf(job, compared.outcomes);
    return compared;
}

std::string CommandBench::commandLine(const Words& words) {
    std::string line = "fendra";
    for (const std::string& word : withModule(words)) {
        line += fmt::format(" {}", quoted(word));
    }
    return line;
}

std::string CommandBench::save(const Words& words, const Answer& answer, const std::string& file) {
    Words whole = withModule(words);
    whole.insert(whole.end(), {"-o", file, "--force"});
    const ParsedFold parsed(whole);
    const auto& stop = answer.outcome.record.stop;
    const std::string said = stop && !stop->rerun.empty()
                                 ? fmt::format("{} -o {}", stop->rerun, quoted(file))
                                 : parsed.job.words;
    return saveOutcome(answer.outcome, said, parsed.command.target());
}

static ModuleObject moduleWith(const FendraSettings& settings, const ModuleLibrary& library) {
    if (const Method* const method = Method::selectedBy(settings); !method->ofModule()) {
        throw Failure(fmt::format(
            "method {} is made of several runs of the module, which cannot hold it; choose another",
            method->word));
    }
    ModuleObject module = library.makeModule();
    applySettings(settings, *module);
    return module;
}

static ModuleLibrary libraryOf(const std::string& file) {
    return ModuleLibrary(file.empty() ? ModuleLibrary::standardFile() : pathOf(file));
}

void CommandBench::saveGraph(const FendraSettings& settings, const std::string& file) {
    const ModuleLibrary library = libraryOf(module);
    storeGraph(*moduleWith(settings, library), file, true);
}

std::optional<FendraSettings> CommandBench::editSettings(const FendraSettings& settings,
                                                         Desktop& desktop) {
    const ModuleLibrary library = libraryOf(module);
    const ModuleObject object = moduleWith(settings, library);
    if (::editSettings(*object, desktop) != DialogEnd::accepted) {
        return std::nullopt;
    }
    return ::settingsOf(*object);
}
