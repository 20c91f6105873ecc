#include "workbench/window/WorkOption.h"

#include "workbench/methods/Method.h"
#include "workbench/methods/Setting.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>

namespace {

// The words of an option, and of those that it may be set to, for people.
struct Text {
    const char *key, *label, *about;
};

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-pro-bounds-array-to-pointer-decay): texts for the translator
static const Text optionTexts[] = {
    {"method", QT_TRANSLATE_NOOP("WorkOption", "&Method"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "How the kernel is removed. Automatic: chosen from the data, "
                       "with all that is not given")},
    {"domain", QT_TRANSLATE_NOOP("WorkOption", "&Domain"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "Whether the convolution is computed in the time or the "
                       "frequency domain")},
    {"convergence", QT_TRANSLATE_NOOP("WorkOption", "Step si&ze"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "Of the iteration. Automatic: 1 over the kernel's largest "
                       "squared gain")},
    {"max-iterations", QT_TRANSLATE_NOOP("WorkOption", "&Iterations"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "Maximum number of iterations, plus one. Automatic: as many "
                       "as the noise allows")},
    {"stop-at-error", QT_TRANSLATE_NOOP("WorkOption", "Stop at err&or"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "Sum of the squared residuals at or below which the iteration "
                       "stops")},
    {"stop-at-minimum", QT_TRANSLATE_NOOP("WorkOption", "Stop at minimum"),
     QT_TRANSLATE_NOOP("WorkOption", "Stop at the first step that raises the error")},
    {"oversample", QT_TRANSLATE_NOOP("WorkOption", "Over&sampling"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "Signal and kernel are interpolated, so that the lag of the "
                       "time domain does no harm")},
    {"scaling", QT_TRANSLATE_NOOP("WorkOption", "S&caling"),
     QT_TRANSLATE_NOOP("WorkOption", "What of the inverse filter is scaled to 1")},
    {"strength", QT_TRANSLATE_NOOP("WorkOption", "S&trength"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "How much is given up to the noise. Automatic: what the data "
                       "allow")},
    {"order", QT_TRANSLATE_NOOP("WorkOption", "Or&der"),
     QT_TRANSLATE_NOOP("WorkOption", "2 keeps the result smooth, 0 keeps it small")},
    {"frequencies", QT_TRANSLATE_NOOP("WorkOption", "&Band"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "FROM:TO in Hz; all outside is suppressed: for a recording of "
                       "a sweep")},
    {"noise", QT_TRANSLATE_NOOP("WorkOption", "&Noise"),
     QT_TRANSLATE_NOOP("WorkOption", "Standard deviation of a sample. Automatic: estimated")},
    {"noise-from", QT_TRANSLATE_NOOP("WorkOption", "Noise from"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "FROM:TO, a stretch of the signal that is nothing but noise; "
                       "or drag over it")},
    {"ends", QT_TRANSLATE_NOOP("WorkOption", "&Ends"),
     QT_TRANSLATE_NOOP("WorkOption", "How the signal goes on beyond its ends")},
    {"origin", QT_TRANSLATE_NOOP("WorkOption", "Origin"),
     QT_TRANSLATE_NOOP("WorkOption", "Which sample of the kernel, counted from 0, stands at zero")},
    {"keep", QT_TRANSLATE_NOOP("WorkOption", "&Keep"),
     QT_TRANSLATE_NOOP("WorkOption",
                       "FROM:TO, the part of the result that is kept, in units of "
                       "its axis")},
    {"pad", QT_TRANSLATE_NOOP("WorkOption", "&Append zeros"),
     QT_TRANSLATE_NOOP("WorkOption", "So that nothing wraps round")},
    {"gain", QT_TRANSLATE_NOOP("WorkOption", "Gain"),
     QT_TRANSLATE_NOOP("WorkOption", "Of the result, in dB; normalize: to full scale")},
};

static const char* const wordTexts[][2] = {
    {"spectral", QT_TRANSLATE_NOOP("WorkOption", "division of spectra")},
    {"van-cittert", QT_TRANSLATE_NOOP("WorkOption", "van Cittert iteration")},
    {"pseudo-inverse", QT_TRANSLATE_NOOP("WorkOption", "pseudo-inverse filter")},
    {"regularized", QT_TRANSLATE_NOOP("WorkOption", "regularised division")},
    {"time", QT_TRANSLATE_NOOP("WorkOption", "time")},
    {"frequency", QT_TRANSLATE_NOOP("WorkOption", "frequency")},
    {"off", QT_TRANSLATE_NOOP("WorkOption", "off")},
    {"on", QT_TRANSLATE_NOOP("WorkOption", "on")},
    {"central", QT_TRANSLATE_NOOP("WorkOption", "central element")},
    {"magnitude", QT_TRANSLATE_NOOP("WorkOption", "magnitude")},
    {"manhattan", QT_TRANSLATE_NOOP("WorkOption", "Manhattan magnitude")},
    {"filter", QT_TRANSLATE_NOOP("WorkOption", "magnitude of the filter")},
    {"none", QT_TRANSLATE_NOOP("WorkOption", "none")},
    {"counts", QT_TRANSLATE_NOOP("WorkOption", "counts")},
    {"periodic", QT_TRANSLATE_NOOP("WorkOption", "periodic")},
    {"zero", QT_TRANSLATE_NOOP("WorkOption", "zero")},
    {"odd", QT_TRANSLATE_NOOP("WorkOption", "odd")},
    {"bridge", QT_TRANSLATE_NOOP("WorkOption", "bridge")},
    {"axis", QT_TRANSLATE_NOOP("WorkOption", "by its axis")},
    {"max", QT_TRANSLATE_NOOP("WorkOption", "its maximum")},
    {"normalize", QT_TRANSLATE_NOOP("WorkOption", "full scale")},
};
// NOLINTEND(cppcoreguidelines-pro-bounds-array-to-pointer-decay)

static QString translated(const char* text) {
    return QCoreApplication::translate("WorkOption", text);
}

static const Text& textsOf(const std::string& key) {
    return *std::find_if(std::begin(optionTexts), std::end(optionTexts),
                         [&](const Text& row) { return key == row.key; });
}

QString WorkOption::label() const {
    return translated(textsOf(key).label);
}

QString WorkOption::about() const {
    return translated(textsOf(key).about);
}

QString WorkOption::wordFor(const std::string& word) {
    for (const auto& row : wordTexts) {
        if (word == row[0]) {
            return translated(row[1]);
        }
    }
    return QString::fromStdString(word);
}

// Those of the module come from its table, without the ones that a whole signal has no use for.
static std::vector<WorkOption> moduleOptions() {
    const FendraSettings standard;
    std::vector<WorkOption> options;
    for (const Setting& setting : Setting::all()) {
        if (setting.key == "direction" || setting.key == "per") {
            continue;
        }
        WorkOption option;
        option.key = setting.key;
        option.command = setting.key == "domain" ? "convolve" : "deconvolve";
        if (setting.needs.starts_with("method=")) {
            option.method = setting.needs.substr(setting.needs.find('=') + 1);
        }
        option.kind = setting.takesNumber() ? WorkOption::Kind::number : WorkOption::Kind::choice;
        option.words = setting.wordList();
        option.byDefault = setting.word(standard);
        option.takesAuto = setting.leftToData != nullptr || setting.key == "method";
        options.push_back(option);
    }
    return options;
}

const std::vector<WorkOption>& WorkOption::all() {
    using enum WorkOption::Kind;
    static const std::vector<WorkOption> options = [] {
        std::vector<WorkOption> rows = moduleOptions();
        const std::string away = "deconvolve";
        rows.insert(rows.end(),
                    {
                        {"oversample", away, "van-cittert", number, {}, "1", true},
                        {"strength", away, "regularized", number, {}, "auto", true},
                        {"order", away, "regularized", choice, {"2", "0"}, "2", false},
                        {"frequencies", away, "regularized", range, {}, "", false},
                        {"noise", away, "", number, {"counts"}, "auto", true},
                        {"noise-from", away, "", range, {}, "", false},
                        {"ends", away, "", choice, {"periodic", "zero", "odd", "bridge"}, "", true},
                        {"origin", "", "", number, {"axis", "max", "none"}, "auto", true},
                        {"keep", away, "", range, {}, "", false},
                        {"pad", "", "", flag, {}, "", false},
                        {"gain", "", "", number, {"normalize"}, "", false},
                    });
        return rows;
    }();
    return options;
}

std::string WorkState::value(const WorkOption& option) const {
    const auto found = values.find(option.key);
    return found != values.end() ? found->second : option.byDefault;
}

// With the method left to the data, so are its options.
bool WorkState::applies(const WorkOption& option) const {
    const auto method = values.find("method");
    return (option.command.empty() || option.command == command) &&
           (option.method.empty() ||
            option.method == (method != values.end() ? method->second : "spectral"));
}

static void add(const WorkOption& option, const std::string& value, FoldBench::Words& words) {
    if (value.empty() || value == option.byDefault) {
        return;
    }
    words.push_back("--" + option.key);
    if (option.kind != WorkOption::Kind::flag) {
        words.push_back(value);
    }
}

static void addOther(const std::string& text, FoldBench::Words& words) {
    for (const QString& word : QProcess::splitCommand(QString::fromStdString(text))) {
        words.push_back(word.toStdString());
    }
}

FoldBench::Words WorkState::words() const {
    FoldBench::Words words = {command, signal, kernel};
    for (const WorkOption& option : WorkOption::all()) {
        if (!applies(option)) {
            continue;
        }
        if (option.key == "method" && value(option) == "auto") {
            words.emplace_back("--auto");
        } else {
            add(option, value(option), words);
        }
    }
    addOther(other, words);
    return words;
}

FoldBench::Words WorkState::comparisonWords() const {
    FoldBench::Words words = {"compare", signal,          kernel, "--max-iterations",
                              "auto",    "--convergence", "auto"};
    for (const WorkOption& option : WorkOption::all()) {
        const bool common = option.method.empty() && option.key != "method" &&
                            option.key != "keep" && option.key != "gain";
        if (common && (option.command.empty() || option.command == "deconvolve")) {
            add(option, value(option), words);
        }
    }
    addOther(other, words);
    return words;
}

FendraSettings WorkState::settings() const {
    FendraSettings settings;
    Setting::named("direction")
        .assign(settings, command == "convolve" ? "convolution" : "deconvolution");
    for (const Setting& setting : Setting::all()) {
        const auto given = values.find(setting.key);
        if (given != values.end() && setting.applies(settings) &&
            setting.problemWith(given->second).empty()) {
            setting.assign(settings, given->second);
        }
    }
    return settings;
}

void WorkState::take(const FendraSettings& settings) {
    command = settings.direction == FendraSettings::convolution ? "convolve" : "deconvolve";
    for (const Setting* setting : Setting::applyingTo(settings)) {
        values[setting->key] = setting->word(settings);
    }
}
