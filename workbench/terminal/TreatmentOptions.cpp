#include "workbench/terminal/TreatmentOptions.h"

#include "workbench/terminal/values.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

static constexpr long long mostOversampling = 64;
static constexpr const char* noiseGroup = "Noise and uncertainty";

using OriginRow = std::pair<const char*, Origin::Kind>;
static constexpr std::array<OriginRow, 4> origins = {{{"auto", Origin::Kind::automatic},
                                                      {"axis", Origin::Kind::axis},
                                                      {"max", Origin::Kind::maximum},
                                                      {"none", Origin::Kind::none}}};

using EndsRow = std::pair<const char*, Ends>;
static constexpr std::array<EndsRow, 4> endings = {{{"periodic", Ends::periodic},
                                                    {"zero", Ends::zero},
                                                    {"odd", Ends::odd},
                                                    {"bridge", Ends::bridge}}};

template <typename Rows>
static std::vector<std::string> wordsOf(const Rows& rows) {
    std::vector<std::string> words;
    std::transform(rows.begin(), rows.end(), std::back_inserter(words),
                   [](const auto& row) { return row.first; });
    return words;
}

template <typename Rows>
static auto valueOf(const Rows& rows, const std::string& word) {
    return std::find_if(rows.begin(), rows.end(),
                        [&](const auto& row) { return row.first == word; })
        ->second;
}

template <typename Rows, typename Value>
static std::string wordOf(const Rows& rows, Value value) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [=](const auto& candidate) { return candidate.second == value; });
    return row->first;
}

static bool isOneOf(const std::vector<std::string>& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// One of some words, or what a check lets through.
static CLI::Validator wordOr(const std::vector<std::string>& words, const CLI::Validator& number) {
    return settingValue(words, true, [=](const std::string& word) {
        std::string given = word;
        const std::string problem = isOneOf(words, word) ? "" : number(given);
        return problem.empty() ? "" : fmt::format("{}, or {}", problem, fmt::join(words, ", "));
    });
}

static CLI::Option* add(CLI::App& command, const char* name, std::string& value, const char* text,
                        const CLI::Validator& check, const char* type, const char* group) {
    return command.add_option(name, value, text)->check(check)->type_name(type)->group(group);
}

void TreatmentOptions::addTo(CLI::App& command, Scope scope) {
    add(command, "--origin", origin,
        "which sample of the kernel, counted from 0, stands at zero: the result is moved by it, "
        "and "
        "by the lag of the time domain. auto: by the kernel's axis, else the maximum of a "
        "symmetric "
        "peak, else 0; none: the samples as the module gives them",
        wordOr(wordsOf(origins), indexValue("sample of the kernel")), "", "Place")
        ->default_str(origin);
    if (scope == Scope::convolution) {
        return;
    }
    add(command, "--ends", ends,
        "how the signal goes on beyond its ends: periodic, unless anything else is asked; zero in "
        "a "
        "room; odd (reflected about its end points) or bridge (half a cosine) for smooth kernels",
        choice(wordsOf(endings)), "", "Ends");
    addStrength(command);
    addNoise(command);
    if (scope == Scope::deconvolution) {
        addWhole(command);
    }
}

void TreatmentOptions::addWhole(CLI::App& command) {
    command
        .add_flag("--auto", wholly,
                  "choose the method and whatever is not given from the data, and say why")
        ->group("Method");
    add(command, "--keep", kept, "the part of the result that is written, in units of its axis",
        rangeValue("part of an axis"), "FROM:TO", "Place");
    command
        .add_flag("--uncertainty", uncertainty,
                  "write value, lower and upper bound (95 %), and name the resolution; text only")
        ->group(noiseGroup);
}

void TreatmentOptions::addStrength(CLI::App& command) {
    const char* const group = "Options of --method regularized";
    add(command, "--strength", strength,
        "how much is given up to the noise, relative to the kernel's largest squared gain; auto: "
        "what the data allow",
        wordOr({fromData}, positiveNumber("strength")), "", group)
        ->default_str(fromData);
    add(command, "--order", order, "2 keeps the result smooth, 0 keeps it small",
        choice({"0", "2"}), "", group)
        ->default_str("2");
    add(command, "--frequencies", frequencies,
        "suppress all outside this band, in Hz, at strength 1 unless given, with room as by --pad: "
        "for a recording of a sweep",
        rangeValue("range of frequencies"), "FROM:TO", group);
    add(command, "--oversample", oversampling,
        "interpolate signal and kernel, so that the lag of the time domain does no harm; auto: 4 "
        "where it does",
        wordOr({fromData}, countUpTo(mostOversampling, "factor")), "",
        "Options of --method van-cittert")
        ->default_str(oversampling);
}

void TreatmentOptions::addNoise(CLI::App& command) {
    CLI::Option* const known =
        add(command, "--noise", noise,
            "standard deviation of the noise in a sample; counts: samples are counts; auto: "
            "estimated",
            wordOr({fromData, "counts"}, positiveNumber("standard deviation")), "", noiseGroup)
            ->default_str(noise);
    add(command, "--noise-from", quiet,
        "a stretch of the signal that is nothing but noise, in units of its axis",
        rangeValue("part of an axis"), "FROM:TO", noiseGroup)
        ->excludes(known);
}

Origin TreatmentOptions::originGiven() const {
    if (isOneOf(wordsOf(origins), origin)) {
        return {valueOf(origins, origin), 0};
    }
    return {Origin::Kind::index, std::stoll(origin)};
}

static Span spanOf(const std::string& word) {
    const NumberRange range = rangeOf(word);
    return {range.from, range.to};
}

static std::optional<Span> optionalSpan(const std::string& word) {
    return word.empty() ? std::nullopt : std::optional(spanOf(word));
}

KnownNoise TreatmentOptions::noiseGiven() const {
    if (!quiet.empty()) {
        return {KnownNoise::Kind::stretch, 0.0, spanOf(quiet)};
    }
    if (noise == "counts") {
        return {KnownNoise::Kind::counts, 0.0, {}};
    }
    if (noise == fromData) {
        return {};
    }
    return {KnownNoise::Kind::sigma, numberOf(noise), {}};
}

Treatment TreatmentOptions::treatment() const {
    Treatment treatment;
    treatment.origin = originGiven();
    treatment.automatic = wholly;
    if (!ends.empty()) {
        treatment.ends = valueOf(endings, ends);
    }
    const bool chooses = oversampling == fromData || (wholly && oversampling == "1");
    treatment.oversampling = chooses ? 0 : static_cast<int>(numberOf(oversampling));
    if (!strength.empty() && strength != fromData) {
        treatment.strength = numberOf(strength);
    }
    treatment.order = order == "0" ? 0 : 2;
    treatment.frequencies = optionalSpan(frequencies);
    treatment.noise = noiseGiven();
    treatment.uncertainty = uncertainty;
    treatment.keep = optionalSpan(kept);
    return treatment;
}

void TreatmentOptions::refuseIgnored(const std::vector<FendraSettings>& used, bool pads) const {
    const auto runs = [&](std::int32_t method) {
        return std::any_of(used.begin(), used.end(), [=](const FendraSettings& settings) {
            return settings.method == method;
        });
    };
    const auto refuse = [](bool ignored, const char* option, const char* why) {
        if (ignored) {
            throw CLI::ValidationError(option, why);
        }
    };
    const bool regularizes = wholly || runs(FendraSettings::regularized);
    const char* const withRegularized = "plays no part here; it goes with --method regularized";
    refuse(!regularizes && !strength.empty(), "--strength", withRegularized);
    refuse(!regularizes && !order.empty(), "--order", withRegularized);
    refuse(!regularizes && !frequencies.empty(), "--frequencies", withRegularized);
    refuse(!frequencies.empty() && !order.empty(), "--order",
           "plays no part beside --frequencies; leave one of them out");
    refuse(!wholly && !runs(FendraSettings::vanCittert) && oversampling != "1", "--oversample",
           "plays no part here; it goes with --method van-cittert");
    refuse(pads && !ends.empty() && ends != "zero", "--ends",
           "contradicts --pad, which appends zeros; leave one of them out");
}

static std::string originWord(const Origin& origin) {
    return origin.kind == Origin::Kind::index ? fmt::format("{}", origin.index)
                                              : wordOf(origins, origin.kind);
}

std::string treatmentWords(const Treatment& treatment) {
    std::string line;
    const auto add = [&line](bool given, const std::string& words) {
        line += given ? " " + words : "";
    };
    const auto addSpan = [&](const char* option, const std::optional<Span>& span) {
        add(span.has_value(), span ? fmt::format("{} {}:{}", option, span->from, span->to) : "");
    };
    const KnownNoise& noise = treatment.noise;
    add(treatment.automatic, "--auto");
    add(treatment.origin.kind != Origin::Kind::automatic,
        "--origin " + originWord(treatment.origin));
    addSpan("--keep", treatment.keep);
    add(treatment.ends.has_value(),
        "--ends " + wordOf(endings, treatment.ends.value_or(Ends::periodic)));
    add(treatment.oversampling != 1 && !treatment.automatic,
        treatment.oversampling == 0 ? "--oversample auto"
                                    : fmt::format("--oversample {}", treatment.oversampling));
    add(treatment.strength.has_value(),
        fmt::format("--strength {}", treatment.strength.value_or(0.0)));
    add(treatment.order != 2, fmt::format("--order {}", treatment.order));
    addSpan("--frequencies", treatment.frequencies);
    add(noise.kind == KnownNoise::Kind::sigma, fmt::format("--noise {}", noise.sigma));
    add(noise.kind == KnownNoise::Kind::counts, "--noise counts");
    if (noise.kind == KnownNoise::Kind::stretch) {
        addSpan("--noise-from", noise.stretch);
    }
    add(treatment.uncertainty, "--uncertainty");
    return line;
}
