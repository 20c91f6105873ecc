#include "workbench/methods/Setting.h"

#include "workbench/methods/Method.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <type_traits>

static std::vector<Setting::Word> wordsOfMethods(std::int32_t direction) {
    std::vector<Setting::Word> words;
    for (const Method* method : Method::of(direction)) {
        words.push_back({method->word, method->code, method->control, method->ofModule()});
    }
    return words;
}

// The controls' ids are the module's public face of its dialog.
static std::vector<Setting> choices() {
    using S = FendraSettings;
    return {{.key = "direction",
             .needs = "",
             .about = "whether to convolve or to deconvolve",
             .words = {{"convolution", S::convolution, 1025},
                       {"deconvolution", S::deconvolution, 1026}},
             .control = 0,
             .field = &S::direction},
            {.key = "per",
             .needs = "",
             .about = "pair the signals block by block, or join all blocks of each into one packet",
             .words = {{"block", S::perBlock, 1040}, {"packet", S::perPacket, 1041}},
             .control = 0,
             .field = &S::executionMode},
            {.key = "domain",
             .needs = "direction=convolution",
             .about = "compute in the time or the frequency domain",
             .words = wordsOfMethods(S::convolution),
             .control = 0,
             .field = &S::method},
            {.key = "method",
             .needs = "direction=deconvolution",
             .about = "how to deconvolve",
             .words = wordsOfMethods(S::deconvolution),
             .control = 0,
             .field = &S::method}};
}

static std::vector<Setting> settingsOfIteration() {
    using S = FendraSettings;
    const std::string iteration = "method=van-cittert";
    return {{.key = "convergence",
             .needs = iteration,
             .about = "step size; auto: 1 over the kernel's largest squared gain; by hand 1 if the "
                      "kernel sums to 1, else start at 1/S^2 with S its sum",
             .words = {},
             .control = 1030,
             .field = &S::convergence,
             .range = Setting::Range::aboveZero,
             .leftToData = &LeftToData::convergence},
            {.key = "max-iterations",
             .needs = iteration,
             .about = "maximum number of iterations, plus one; auto: as many as the noise in the "
                      "signal allows; by hand with noise 10 to 30",
             .words = {},
             .control = 1031,
             .field = &S::maxIterations,
             .leftToData = &LeftToData::maxIterations},
            {.key = "stop-at-error",
             .needs = iteration,
             .about = "off, or the sum of the squared residuals at or below which to stop",
             .words = {{"off", 0, 0}},
             .control = 1034,
             .field = &S::errorValue,
             .range = Setting::Range::aboveZero,
             .enabledBy = &S::abortAtError,
             .enablingControl = 1032},
            {.key = "stop-at-minimum",
             .needs = iteration,
             .about = "stop at the first step that raises the error, and discard it",
             .words = {{"off", 0, 0}, {"on", 1, 0}},
             .control = 1033,
             .field = &S::abortAtMinError}};
}

static std::vector<Setting> settingsOfFilter() {
    return {{.key = "scaling",
             .needs = "method=pseudo-inverse",
             .about = "what to scale to 1: the central element, the magnitude or the manhattan "
                      "magnitude of the identity, the magnitude of the filter, or none of them",
             .words = {{"central", 0, 0},
                       {"magnitude", 1, 0},
                       {"manhattan", 2, 0},
                       {"filter", 3, 0},
                       {"none", 4, 0}},
             .control = 1036,
             .field = &FendraSettings::scaling}};
}

const std::vector<Setting>& Setting::all() {
    static const std::vector<Setting> table = [] {
        std::vector<Setting> rows = choices();
        for (const std::vector<Setting>& more : {settingsOfIteration(), settingsOfFilter()}) {
            rows.insert(rows.end(), more.begin(), more.end());
        }
        return rows;
    }();
    return table;
}

const Setting& Setting::named(const std::string& key) {
    return *std::find_if(all().begin(), all().end(),
                         [&](const Setting& setting) { return setting.key == key; });
}

std::vector<const Setting*> Setting::applyingTo(const FendraSettings& settings) {
    std::vector<const Setting*> some;
    for (const Setting& setting : all()) {
        if (setting.applies(settings)) {
            some.push_back(&setting);
        }
    }
    return some;
}

const Setting::Word* Setting::find(const std::string& word) const {
    const auto found =
        std::find_if(words.begin(), words.end(), [&](const Word& row) { return row.word == word; });
    return found == words.end() ? nullptr : &*found;
}

std::vector<std::string> Setting::wordList() const {
    std::vector<std::string> list;
    std::transform(words.begin(), words.end(), std::back_inserter(list),
                   [](const Word& row) { return row.word; });
    return list;
}

std::vector<std::string> Setting::moduleWords() const {
    std::vector<std::string> list;
    for (const Word& row : words) {
        if (row.ofModule) {
            list.push_back(row.word);
        }
    }
    return list;
}

std::variant<std::string, Setting::Number> Setting::value(const FendraSettings& settings) const {
    const Number number = std::visit([&](auto member) { return Number(settings.*member); }, field);
    if (enabledBy != nullptr) {
        return settings.*enabledBy == 0 ? std::variant<std::string, Number>("off") : number;
    }
    if (words.empty()) {
        return number;
    }
    // To the module a check box is on at any value but 0.
    const std::int32_t held = std::get<std::int32_t>(number);
    const std::int32_t shown = key == "stop-at-minimum" && held != 0 ? 1 : held;
    const auto found = std::find_if(words.begin(), words.end(),
                                    [=](const Word& row) { return row.held == shown; });
    return found == words.end() ? std::variant<std::string, Number>(number) : found->word;
}

std::string Setting::word(const FendraSettings& settings) const {
    const auto held = value(settings);
    if (const auto* const known = std::get_if<std::string>(&held)) {
        return *known;
    }
    return std::visit([](auto number) { return fmt::format("{}", number); },
                      std::get<Number>(held));
}

std::string Setting::text(const FendraSettings& settings) const {
    return key + "=" + word(settings);
}

// What a setting needs may need something itself: the method of an iteration, deconvolution.
bool Setting::applies(const FendraSettings& settings) const {
    for (const Setting* setting = this; !setting->needs.empty();) {
        const Setting* const needed = Assignment(setting->needs).setting;
        if (needed->text(settings) != setting->needs) {
            return false;
        }
        setting = needed;
    }
    return true;
}

template <typename Number>
static bool parse(const std::string& word, Number& number) {
    const char* const end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && rest == end;
}

// Whether a word is a number that the field takes, and that lies in the range.
static bool fits(const Setting& setting, const std::string& word) {
    return std::visit(
        [&](auto member) {
            std::remove_cvref_t<decltype(FendraSettings().*member)> number = 0;
            if (!parse(word, number)) {
                return false;
            }
            if constexpr (std::is_integral_v<decltype(number)>) {
                return number >= 1;
            } else {
                return std::isfinite(number) &&
                       (number > 0.0 || setting.range != Setting::Range::aboveZero);
            }
        },
        setting.field);
}

std::string Setting::problemWith(const std::string& given) const {
    if (find(given) != nullptr || (takesNumber() && fits(*this, given))) {
        return "";
    }
    if (!takesNumber()) {
        return fmt::format("\"{}\" must be one of {}", given, fmt::join(wordList(), ", "));
    }
    const bool whole = std::holds_alternative<std::uint32_t FendraSettings::*>(field);
    const std::string number =
        whole
            ? fmt::format("a whole number from 1 to {}", std::numeric_limits<std::uint32_t>::max())
            : std::string(range == Range::aboveZero ? "a number above 0" : "a finite number");
    return fmt::format("\"{}\" is not valid; give {}{}", given,
                       enabledBy != nullptr ? "off or " : "", number);
}

void Setting::assign(FendraSettings& settings, const std::string& given) const {
    const Word* const row = find(given);
    if (enabledBy != nullptr) {
        settings.*enabledBy = row == nullptr ? 1 : 0;
    }
    if (row == nullptr) {
        std::visit([&](auto member) { parse(given, settings.*member); }, field);
    } else if (enabledBy == nullptr) {
        settings.*std::get<std::int32_t FendraSettings::*>(field) = row->held;
    }
}

Assignment::Assignment(const std::string& keyAndValue) {
    const std::size_t equals = keyAndValue.find('=');
    setting = &Setting::named(keyAndValue.substr(0, equals));
    value = keyAndValue.substr(equals + 1);
}

std::string settingsLine(const FendraSettings& settings) {
    std::vector<std::string> texts;
    for (const Setting* setting : Setting::applyingTo(settings)) {
        texts.push_back(setting->text(settings));
    }
    return fmt::format("{}", fmt::join(texts, " "));
}

std::string refusedSetting(const FendraSettings& settings) {
    for (const Setting* setting : Setting::applyingTo(settings)) {
        const auto held = setting->value(settings);
        const bool isWord = std::holds_alternative<std::string>(held);
        if (!setting->takesNumber() && !isWord) {
            return setting->text(settings) + ", which is not on offer";
        }
        // An error bound of 0 or less never ends the iteration, and does no harm.
        if (setting->key == "convergence" && !(settings.convergence > 0.0)) {
            return setting->text(settings) + ", which does not let the iteration converge";
        }
    }
    return "";
}
