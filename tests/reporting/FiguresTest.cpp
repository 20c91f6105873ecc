#include "workbench/reporting/figures.h"

#include "workbench/figures/places.h"
#include "workbench/methods/Method.h"
#include "workbench/reporting/spectra.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <random>
#include <utility>

static std::vector<double> noise(std::size_t size, unsigned seed) {
    std::mt19937 engine(seed);
    std::normal_distribution<double> distribution;
    std::vector<double> samples(size);
    std::generate(samples.begin(), samples.end(), [&] { return distribution(engine); });
    return samples;
}

// |sum_n h[n] x[n] exp(-2 pi i j n / N)|^2, by its definition.
template <typename Window>
static long double plainSquare(const double* x, std::size_t size, std::size_t j,
                               const Window& window) {
    long double re = 0.0L, im = 0.0L;
    for (std::size_t n = 0; n < size; ++n) {
        const long double angle = 2.0L * std::numbers::pi_v<long double> *
                                  static_cast<long double>(j * n % size) /
                                  static_cast<long double>(size);
        re += window(n) * static_cast<long double>(x[n]) * std::cos(angle);
        im -= window(n) * static_cast<long double>(x[n]) * std::sin(angle);
    }
    return re * re + im * im;
}

TEST(MagnitudeSpectrum, IsTheSumOfItsDefinition) {
    for (const std::size_t size : {1U, 2U, 97U, 1000U}) {
        const std::vector<double> samples = noise(size, 1);
        const MagnitudeSpectrum spectrum = magnitudeSpectrum(samples);
        ASSERT_EQ(size / 2 + 1, spectrum.magnitudes.size());
        EXPECT_EQ(1U, spectrum.stretches);
        for (std::size_t j = 0; j <= size / 2; ++j) {
            const long double expected =
                std::sqrt(plainSquare(samples.data(), size, j, [](std::size_t) { return 1.0L; }));
            EXPECT_NEAR(static_cast<double>(expected), spectrum.magnitudes[j], 1e-10) << j;
        }
    }
}

// The mean over stretches, the last of which ends with the signal or just before; and white noise
// of deviation 1 has the root of N for its root mean square.
TEST(MagnitudeSpectrum, OfALongSignalIsAnAverage) {
    constexpr std::size_t size = 50000;
    std::vector<double> samples = noise(size, 2);
    samples[77] = std::nan("");
    const MagnitudeSpectrum spectrum = magnitudeSpectrum(samples);
    samples[77] = 0.0;
    const std::size_t length = spectrum.length;
    const auto hann = [length](std::size_t n) {
        return 0.5L -
               0.5L * std::cos(2.0L * std::numbers::pi_v<long double> *
                               static_cast<long double>(n) / static_cast<long double>(length));
    };
    EXPECT_EQ(5U, spectrum.stretches);
    const std::size_t step = (size - length) / 4;
    for (const std::size_t j : {std::size_t{0}, std::size_t{1}, std::size_t{333}, length / 2}) {
        long double sum = 0.0L;
        for (std::size_t k = 0; k < 5; ++k) {
            sum += plainSquare(samples.data() + k * step, length, j, hann);
        }
        const long double windowSquares = 0.375L * static_cast<long double>(length);
        const long double expected = std::sqrt(size / windowSquares * sum / 5.0L);
        EXPECT_NEAR(1.0, spectrum.magnitudes[j] / static_cast<double>(expected), 1e-9) << j;
    }
    double squares = 0.0;
    for (const double magnitude : spectrum.magnitudes) {
        squares += magnitude * magnitude;
    }
    squares /= static_cast<double>(spectrum.magnitudes.size());
    EXPECT_NEAR(1.0, squares / size, 0.03);
}

static SharedSignal signalOf(const char* name, std::vector<double> samples, int channels = 1) {
    auto signal = std::make_shared<Signal>();
    signal->info.source = SourceName(name);
    signal->info.channels = channels;
    signal->info.samples = std::ssize(samples) / channels;
    signal->interleaved = std::move(samples);
    return signal;
}

static const Pane* paneOf(const Figure& figure, PaneKind kind) {
    const auto found = std::find_if(figure.panes.begin(), figure.panes.end(),
                                    [kind](const Pane& pane) { return pane.kind == kind; });
    return found == figure.panes.end() ? nullptr : &*found;
}

// sum_k kernel[k] result[place - k], periodic or with zeros around.
static double plainFold(const std::vector<double>& kernel, const std::vector<double>& result,
                        int place, bool pad) {
    const int length = static_cast<int>(result.size());
    double sum = 0.0;
    for (int k = 0; k < static_cast<int>(kernel.size()); ++k) {
        const int i = place - k;
        const bool inside = i >= 0 && i < length;
        sum += inside || !pad ? kernel[static_cast<std::size_t>(k)] *
                                    result[static_cast<std::size_t>((i + length) % length)]
                              : 0.0;
    }
    return sum;
}

// The result was scaled by 20 dB.
TEST(Figures, ResidualIsTheKernelOnTheResultLessTheSignal) {
    constexpr int length = 40, taps = 7, zero = 2;
    const std::vector<double> result = noise(length, 3), kernel = noise(taps, 4),
                              measured = noise(length, 5);
    for (const bool pad : {false, true}) {
        Outcome outcome;
        outcome.record.settings.direction = FendraSettings::deconvolution;
        outcome.record.rounds = 1;
        outcome.record.pad = pad;
        outcome.record.moved = Movement{zero + 1, zero, 1, ""};
        outcome.record.gain = GainRecord{20.0, {}};
        std::vector<double> scaled = result;
        for (double& value : scaled) {
            value *= 10.0;
        }
        outcome.result = *signalOf("result", scaled);
        const Figure figure = figureOf(signalOf("y", measured), signalOf("h", kernel), outcome);
        const Pane* const pane = paneOf(figure, PaneKind::residual);
        ASSERT_NE(nullptr, pane);
        EXPECT_TRUE(pane->linked);
        for (int n = 0; n < length; ++n) {
            const double sum = plainFold(kernel, result, n + zero, pad);
            const auto place = static_cast<std::size_t>(n);
            EXPECT_NEAR(sum - measured[place], (*pane->graphs.at(0).values)[place], 1e-12) << n;
        }
    }
}

// Value, lower and upper of two channels, on an axis that falls.
TEST(Figures, ResultStandsOnTheSignalWithItsBand) {
    Outcome outcome;
    outcome.record.channels = 2;
    outcome.record.uncertainty = UncertaintyRecord{0.5, 1.0, 1.0};
    outcome.result = *signalOf("result", {1, 0, 2, 11, 10, 12, 3, 2, 4, 13, 12, 14}, 6);
    outcome.result.info.axis = SignalAxis{"mass", 9.0, -2.0, false, 2.0, 2.0};
    auto signal = std::make_shared<Signal>(*signalOf("folder/y.csv", {5, 6}));
    signal->info.axis = outcome.result.info.axis;
    signal->info.names = {"ions\n"};
    const Figure figure = figureOf(SharedSignal(signal), signalOf("h", {1.0}), outcome);
    const Pane& pane = figure.panes.at(0);
    EXPECT_EQ("mass", pane.x.label);
    EXPECT_EQ("ions?", pane.y.label);
    ASSERT_EQ(3U, pane.graphs.size());
    EXPECT_EQ("y.csv", pane.graphs[0].name);
    EXPECT_EQ("result, channel 2", pane.graphs[2].name);
    EXPECT_EQ(7.0, placeOf(pane.graphs[2], 0));
    EXPECT_EQ(13.0, (*pane.graphs[2].values)[0]);
    EXPECT_EQ(12.0, (*pane.graphs[2].lower)[0]);
    EXPECT_EQ(12.0, (*pane.graphs[2].upper)[1]);
    EXPECT_EQ(nullptr, paneOf(figure, PaneKind::residual));  // it was no deconvolution
}

TEST(Figures, ChoiceIsACurveWithItsPointMarked) {
    Outcome outcome;
    outcome.result = *signalOf("result", {1.0});
    outcome.record.choice.emplace();
    outcome.record.choice->steps = 10;
    for (const double steps : {100.0, 1.0, 10.0, 10.0}) {
        outcome.record.choice->curve.push_back({.parameter = steps, .criterion = steps - 5.0});
    }
    const Figure figure = figureOf(signalOf("y", {1.0}), signalOf("h", {1.0}), outcome);
    const Pane* const pane = paneOf(figure, PaneKind::choice);
    ASSERT_NE(nullptr, pane);
    EXPECT_EQ((std::vector<double>{1.0, 10.0, 100.0}), pane->graphs.at(0).places);
    EXPECT_EQ(1U, pane->graphs.at(0).marked);
    EXPECT_FALSE(pane->y.logarithmic);  // the criterion is below 0 at one step
}

TEST(Figures, SayHowManyChannelsAreLeftOut) {
    const Figure figure = figureOf({signalOf("many", std::vector<double>(40), 20)});
    EXPECT_EQ(12U, figure.panes.at(0).graphs.size());
    ASSERT_EQ(1U, figure.caption.size());
    EXPECT_EQ("the first 12 of 20 channels are shown", figure.caption[0]);
}

namespace {

// What a file says of its axis, and what stands on the axes of its panes.
struct AxisRow {
    double rate;
    std::optional<SignalAxis> axis;
    const char *label, *frequency;
    double first, last, nyquist;
};

}  // namespace

static void expectAxesOf(const AxisRow& row) {
    auto signal = std::make_shared<Signal>(*signalOf("a", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    signal->info.rate = row.rate;
    signal->info.axis = row.axis;
    const Figure figure = figureOf({signal});
    const Graph &samples = figure.panes.at(0).graphs.at(0),
                &spectrum = figure.panes.at(1).graphs.at(0);
    EXPECT_EQ(row.label, figure.panes[0].x.label);
    EXPECT_EQ(row.frequency, figure.panes[1].x.label);
    EXPECT_DOUBLE_EQ(row.first, placeOf(samples, 0));
    EXPECT_DOUBLE_EQ(row.last, placeOf(samples, 9));
    EXPECT_DOUBLE_EQ(row.nyquist, placeOf(spectrum, 5));
    const bool reversed = row.axis && row.axis->step < 0.0;
    EXPECT_EQ(reversed ? 10.0 : 1.0, (*samples.values)[0]);
}

// Time in seconds where there is a rate, even if an axis is something else; a falling axis begins
// at its lower end.
TEST(Figures, AxesAreThoseOfTheFiles) {
    const SignalAxis time{"t_ms", 0.5, 0.25, true, 0.25, 0.25};
    const SignalAxis energy{"E <keV>\t", 3.0, 0.5, false, 0.5, 0.5};
    const SignalAxis falling{"wavenumber", 400.0, -2.0, false, 2.0, 2.0};
    for (const AxisRow& row :
         {AxisRow{0.0, {}, "sample", "cycles per sample", 0.0, 9.0, 0.5},
          AxisRow{50.0, {}, "time (s)", "frequency (Hz)", 0.0, 0.18, 25.0},
          AxisRow{4.0, time, "time (s)", "frequency (Hz)", 0.5, 2.75, 2.0},
          AxisRow{0.0, energy, "E <keV>?", "cycles per E <keV>?", 3.0, 7.5, 1.0},
          AxisRow{0.0, falling, "wavenumber", "cycles per wavenumber", 382.0, 400.0, 0.25}}) {
        expectAxesOf(row);
    }
}

// White noise of that deviation has the magnitude s sqrt(N) at all frequencies.
TEST(Figures, NoiseIsALevelAmongTheSpectra) {
    Outcome outcome;
    outcome.result = *signalOf("result", std::vector<double>(100, 1.0));
    outcome.record.choice.emplace();
    outcome.record.choice->noise = 0.25;
    const Figure figure = figureOf(signalOf("y", noise(100, 6)), signalOf("h", {1.0}), outcome);
    const Pane* const spectra = paneOf(figure, PaneKind::spectra);
    ASSERT_NE(nullptr, spectra);
    EXPECT_TRUE(spectra->y.logarithmic);
    EXPECT_FALSE(spectra->linked);
    const Graph& level = spectra->graphs.back();
    EXPECT_EQ(GraphRole::noise, level.role);
    EXPECT_DOUBLE_EQ(2.5, (*level.values)[0]);
    EXPECT_DOUBLE_EQ(0.5, placeOf(level, 1));
}

// A method without a result has no graph; the others go on.
TEST(Figures, ComparisonHasAGraphForEachResult) {
    CompareJob job;
    job.signal = signalOf("y", {1.0, 2.0, 3.0});
    job.kernel = signalOf("h", {1.0});
    job.truth = sourceOf(signalOf("truth", {1.0, 2.0, 3.5}));
    std::vector<MethodOutcome> outcomes(3);
    const std::vector<const Method*> methods = Method::of(FendraSettings::deconvolution);
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        outcomes[i].method = methods.at(i);
        outcomes[i].result = *job.signal;
        outcomes[i].record.settings.direction = FendraSettings::deconvolution;
        outcomes[i].record.rounds = 1;
    }
    outcomes[1].failure = "no result";
    const Figure figure = figureOf(job, outcomes);
    std::vector<std::string> names;
    for (const Graph& graph : figure.panes.at(0).graphs) {
        names.push_back(graph.name);
    }
    EXPECT_EQ((std::vector<std::string>{"y", "truth", methods[0]->word, methods[2]->word}), names);
    const Pane* const residual = paneOf(figure, PaneKind::residual);
    ASSERT_NE(nullptr, residual);
    ASSERT_EQ(2U, residual->graphs.size());
    EXPECT_NE(residual->graphs[0].variant, residual->graphs[1].variant);
    EXPECT_NEAR(0.0, residual->graphs[0].values->finiteRange().highest, 1e-12);
}

// Of a part of the result, or one of several blocks, the kernel does not lead back to the signal.
TEST(Figures, NoResidualWhereTheResultIsNotTheWhole) {
    for (const auto& [samples, rounds] : {std::pair{3, 1}, {4, 2}}) {
        Outcome outcome;
        outcome.record.settings.direction = FendraSettings::deconvolution;
        outcome.record.rounds = rounds;
        outcome.result = *signalOf("r", noise(static_cast<std::size_t>(samples), 1));
        const Figure figure = figureOf(signalOf("y", noise(4, 2)), signalOf("h", {1.0}), outcome);
        EXPECT_EQ(nullptr, paneOf(figure, PaneKind::residual));
    }
}
