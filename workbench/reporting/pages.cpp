#include "workbench/reporting/pages.h"

#include "workbench/jobs/methodSentences.h"
#include "workbench/methods/Method.h"
#include "workbench/methods/Setting.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

using Text = PageText;

static PageCell label(Text text) {
    return {PageCell::Kind::label, {}, text};
}

static PageCell sentence(const std::string& text) {
    return {PageCell::Kind::sentence, text};
}

static PageCell name(const std::string& text) {
    return {PageCell::Kind::name, text};
}

static PageCell code(const std::string& text) {
    return {PageCell::Kind::code, text};
}

static PageCell number(double value, const char* format = "{:.6g}") {
    return {PageCell::Kind::number, fmt::format(fmt::runtime(format), value)};
}

static PageCell count(std::int64_t value) {
    return {PageCell::Kind::number, fmt::format("{}", value)};
}

static PageCell rate(double value) {
    return value > 0.0 ? PageCell{PageCell::Kind::number, fmt::format("{}", value)} : name("-");
}

static std::vector<PageCell> sentences(const std::vector<std::string>& texts) {
    std::vector<PageCell> cells;
    std::transform(texts.begin(), texts.end(), std::back_inserter(cells), sentence);
    return cells;
}

static void addIf(PageTable& table, Text what, const std::optional<double>& value) {
    if (value) {
        table.rows.push_back({label(what), number(*value)});
    }
}

static void addIf(PageTable& table, Text what, const std::optional<std::int64_t>& value) {
    if (value) {
        table.rows.push_back({label(what), count(*value)});
    }
}

// Tables without rows are left out.
static void addTo(PageSection& section, PageTable table) {
    if (!table.rows.empty()) {
        section.tables.push_back(std::move(table));
    }
}

static PageSection remarksOf(const RunRecord& record) {
    PageSection section{.title = Text::remarks, .lines = sentences(record.remarks), .warns = true};
    if (record.stopped) {
        section.lines.push_back(label(Text::stopped));
    }
    if (record.stop) {
        section.lines.push_back(sentence(record.stop->text()));
    }
    return section;
}

static PageTable choiceTable(const ChoiceRecord& choice) {
    PageTable table;
    if (!choice.rule.empty()) {
        table.rows.push_back({label(Text::rule), sentence(choice.rule)});
    }
    table.rows.push_back({label(Text::method), code(choice.method)});
    addIf(table, Text::steps, choice.steps);
    addIf(table, Text::strength, choice.strength);
    addIf(table, Text::convergence, choice.convergence);
    if (choice.oversampling) {
        table.rows.push_back({label(Text::oversampling), count(*choice.oversampling)});
    }
    table.rows.push_back({label(Text::explained), number(100.0 * choice.explained, "{:.2f}")});
    table.rows.push_back(
        {label(Text::kept),
         {PageCell::Kind::number, fmt::format("{:.1f} / {:.0f}", choice.kept, choice.degrees)}});
    table.rows.push_back(
        {label(choice.noiseIsBound ? Text::noiseAtMost : Text::noise), number(choice.noise)});
    addIf(table, Text::whiteness, choice.whiteness);
    addIf(table, Text::predictedError, choice.predictedError);
    return table;
}

static PageSection choiceOf(const RunRecord& record) {
    PageSection section{.title = Text::chosen};
    if (record.choice) {
        section.lines = sentences(record.choice->reasons);
        addTo(section, choiceTable(*record.choice));
    }
    if (record.moved) {
        section.lines.push_back(sentence(record.moved->text()));
    }
    return section;
}

static PageTable responsesOf(const RunRecord& record) {
    PageTable table{.heads = {label(Text::channel), label(Text::peak), label(Text::peakSample),
                              label(Text::aboveNoise), label(Text::quietest)}};
    for (const ResponseRecord& response : record.responses) {
        table.rows.push_back({count(response.channel + 1), number(response.peak),
                              count(response.peakSample), number(response.decibels(), "{:.1f}"),
                              number(response.noise)});
    }
    return table;
}

static PageSection worthOf(const RunRecord& record) {
    PageSection section{.title = Text::worth};
    PageTable table;
    if (record.uncertainty) {
        table.rows = {{label(Text::band), number(record.uncertainty->halfWidth)},
                      {label(Text::resolution), number(record.uncertainty->resolution)},
                      {label(Text::noise), number(record.uncertainty->noise)}};
    }
    if (record.error) {
        table.rows.push_back({label(Text::truth), name(record.error->truth.shown)});
        table.rows.push_back({label(Text::error), number(record.error->relativeError)});
        table.rows.push_back({label(Text::compared), count(record.error->samples)});
    }
    addTo(section, std::move(table));
    addTo(section, responsesOf(record));
    return section;
}

static PageSection numbersOf(const RunRecord& record) {
    PageTable table{.heads = {label(Text::block), label(Text::channel)}};
    for (const std::string& named : record.numberNames) {
        table.heads.push_back(name(named));
    }
    for (const ReportedNumbers& entry : record.numbers) {
        PageRow row = {count(entry.round + 1), count(entry.channel + 1)};
        for (const double value : entry.values) {
            row.push_back(number(value));
        }
        table.rows.push_back(std::move(row));
    }
    PageSection section{.title = Text::methodNumbers};
    addTo(section, std::move(table));
    return section;
}

static PageSection resultOf(const RunRecord& record) {
    PageTable table{.rows = {{label(Text::file), name(record.output.shown)},
                             {label(Text::samples), count(record.samples)},
                             {label(Text::channels), count(record.channels)},
                             {label(Text::rate), rate(record.rate)},
                             {label(Text::lowest), number(record.minimum)},
                             {label(Text::highest), number(record.maximum)}}};
    if (record.gain) {
        table.rows.push_back({label(Text::gain), number(record.gain->decibels)});
    }
    table.rows.push_back({label(Text::sampleDigest), code(record.digest)});
    return {.title = Text::result, .tables = {std::move(table)}};
}

static PageSection settingsOf(const RunRecord& record) {
    PageTable table;
    for (const Setting* setting : Setting::applyingTo(record.settings)) {
        table.rows.push_back({code(setting->key), code(setting->word(record.settings))});
    }
    table.rows.push_back(
        {label(Text::block), record.block > 0 ? count(record.block) : label(Text::wholeSignal)});
    if (record.pad) {
        table.rows.push_back({label(Text::padded), label(Text::yes)});
    }
    table.rows.push_back({label(Text::module), name(record.module + " " + record.moduleVersion)});
    return {.title = Text::settings, .tables = {std::move(table)}};
}

// A column for each, so that a digest has room.
static PageSection filesOf(const std::vector<SignalInfo>& inputs) {
    PageTable table{.heads = {name(""), label(Text::signal), label(Text::kernel)}};
    const auto add = [&](Text what, auto cell) {
        PageRow row = {label(what)};
        std::transform(inputs.begin(), inputs.end(), std::back_inserter(row), cell);
        table.rows.push_back(std::move(row));
    };
    add(Text::file, [](const SignalInfo& input) { return name(input.source.shown); });
    add(Text::format, [](const SignalInfo& input) { return sentence(input.format); });
    add(Text::samples, [](const SignalInfo& input) { return count(input.samples); });
    add(Text::channels, [](const SignalInfo& input) { return count(input.channels); });
    add(Text::rate, [](const SignalInfo& input) { return rate(input.rate); });
    add(Text::fileDigest, [](const SignalInfo& input) { return code(input.sha256); });
    return {.title = Text::files, .tables = {std::move(table)}};
}

static PageSection again(const std::string& words) {
    return {.title = Text::again, .lines = {code(words)}};
}

static PageSection again(const RunRecord& record) {
    PageSection section = again(record.words);
    const auto add = [&section](Text how, const std::string& words) {
        if (!words.empty()) {
            section.lines.push_back(label(how));
            section.lines.push_back(code(words));
        }
    };
    if (record.choice) {
        add(Text::withoutSearch, record.choice->rerun);
    }
    if (record.stop) {
        add(Text::withoutStop, record.stop->rerun);
    }
    return section;
}

// The title, and the sections that are not empty.
static Page pageWith(Text title, const std::vector<SourceName>& files,
                     const std::vector<PageSection>& sections) {
    Page page{.title = title};
    for (const SourceName& file : files) {
        page.names.push_back(file.shown);
    }
    std::copy_if(sections.begin(), sections.end(), std::back_inserter(page.sections),
                 [](const PageSection& section) { return !section.empty(); });
    return page;
}

Page pageOf(const RunRecord& record) {
    return pageWith(Text::deconvolution, {record.inputs.at(0).source, record.inputs.at(1).source},
                    {remarksOf(record), choiceOf(record), worthOf(record), numbersOf(record),
                     resultOf(record), settingsOf(record), filesOf(record.inputs), again(record)});
}

static std::string reportedBy(const RunRecord& record) {
    std::vector<std::string> parts;
    for (const ReportedNumbers& entry : record.numbers) {
        for (std::size_t i = 0; i < entry.values.size(); ++i) {
            parts.push_back(fmt::format("{} {:.6g}", record.numberNames[i], entry.values[i]));
        }
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

static PageRow rowOf(const MethodOutcome& outcome) {
    if (!outcome.failure.empty()) {
        return {code(outcome.method->word), name("-"), name("-"), name("-"),
                sentence(outcome.failure)};
    }
    const auto& error = outcome.record.error;
    return {code(outcome.method->word), number(outcome.misfit, "{:.2g}"),
            number(outcome.roughness, "{:.2g}"),
            error ? number(error->relativeError, "{:.2g}") : name("-"),
            name(reportedBy(outcome.record))};
}

static PageSection methodsOf(const std::vector<MethodOutcome>& outcomes) {
    PageTable table{.heads = {label(Text::method), label(Text::misfit), label(Text::roughness),
                              label(Text::error), label(Text::reported)}};
    std::transform(outcomes.begin(), outcomes.end(), std::back_inserter(table.rows), rowOf);
    return {.title = Text::methods, .note = Text::methodsNote, .tables = {std::move(table)}};
}

static PageSection remarksOf(const std::vector<MethodOutcome>& outcomes) {
    PageSection section{.title = Text::remarks};
    for (const auto& [text, methods] : sentencesOn(outcomes)) {
        section.lines.push_back(sentence(
            methods.empty() ? text : fmt::format("{}: {}", fmt::join(methods, ", "), text)));
    }
    return section;
}

static PageSection resultsOf(const std::vector<MethodOutcome>& outcomes) {
    PageTable table{.heads = {label(Text::method), label(Text::lowest), label(Text::highest),
                              label(Text::sampleDigest)}};
    for (const MethodOutcome& outcome : outcomes) {
        if (outcome.failure.empty()) {
            const RunRecord& record = outcome.record;
            table.rows.push_back({code(outcome.method->word), number(record.minimum),
                                  number(record.maximum), code(record.digest)});
        }
    }
    PageSection section{.title = Text::result};
    addTo(section, std::move(table));
    return section;
}

static PageSection settingsOf(const std::vector<MethodOutcome>& outcomes) {
    PageTable table;
    for (const MethodOutcome& outcome : outcomes) {
        if (outcome.failure.empty()) {
            table.rows.push_back(
                {code(outcome.method->word), code(settingsLine(outcome.record.settings))});
        }
    }
    PageSection section{.title = Text::settings};
    addTo(section, std::move(table));
    return section;
}

Page pageOf(const CompareJob& job, const std::vector<MethodOutcome>& outcomes,
            const std::string& words) {
    return pageWith(
        Text::comparison, {job.signal->info.source, job.kernel->info.source},
        {methodsOf(outcomes), remarksOf(outcomes), resultsOf(outcomes), settingsOf(outcomes),
         filesOf({job.signal->info, job.kernel->info}), again(words)});
}

Page pageOf(const SweepRecord& record) {
    const PageTable result{.rows = {{label(Text::file), name(record.output.shown)},
                                    {label(Text::samples), count(record.samples)},
                                    {label(Text::rate), rate(record.rate)},
                                    {label(Text::sampleDigest), code(record.digest)}}};
    const PageTable settings{
        .rows = {{label(Text::frequencies), name(fmt::format("{} - {}", record.from, record.to))},
                 {label(Text::seconds), number(record.seconds)},
                 {label(Text::fade), number(record.fade)}}};
    return pageWith(Text::sweep, {record.output},
                    {{.title = Text::settings, .tables = {settings}},
                     {.title = Text::result, .tables = {result}},
                     again(record.words)});
}
