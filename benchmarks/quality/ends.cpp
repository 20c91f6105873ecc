#include "benchmarks/quality/Ratios.h"
#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"

#include <cstdint>
#include <optional>

// A minute of an electrocardiogram by a slow recorder, which starts at nothing, and one cut of it.
static std::vector<double> recorded(const std::vector<double>& minute,
                                    const std::vector<double>& kernel) {
    std::vector<double> result(minute.size());
    for (std::size_t n = 0; n < minute.size(); ++n) {
        for (std::size_t k = 0; k < kernel.size() && k <= n; ++k) {
            result[n] += kernel[k] * minute[n - k];
        }
    }
    return result;
}

static double relativeError(const std::vector<double>& samples, const std::vector<double>& truth) {
    std::vector<double> difference(samples);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        difference[i] -= truth[i];
    }
    return rootMeanSquare(difference) / rootMeanSquare(truth);
}

static double medianError(Laboratory& laboratory, const std::optional<Ends>& ends) {
    constexpr std::ptrdiff_t length = 2048, first = 600, step = 900;
    DataSet set = dataSet("electrocardiogram");
    const std::vector<double> minute = sampleFile("ecg-minute.csv");
    const std::vector<double> signal = recorded(minute, set.kernel);
    Ratios errors;
    for (int cut = 0; cut < 20; ++cut) {
        const auto start = first + cut * step;
        set.truth.assign(minute.begin() + start, minute.begin() + start + length);
        const std::vector<double> measured =
            withWhiteNoise({signal.begin() + start, signal.begin() + start + length}, 1e-3,
                           static_cast<std::uint64_t>(cut));
        FoldJob job =
            ends ? Laboratory::iteration(set, measured) : Laboratory::automatic(set, measured);
        if (ends) {
            job.treatment.ends = ends;
            job.treatment.oversampling = 4;
        }
        errors.add(relativeError(laboratory.run(job).samples(), set.truth));
    }
    return errors.median();
}

void measureEnds(Laboratory& laboratory, Figures& figures) {
    figures.section("20 cuts of an electrocardiogram, median error");
    const double periodic = medianError(laboratory, Ends::periodic);
    const double odd = medianError(laboratory, Ends::odd);
    figures.note("iteration, periodic ends", periodic);
    figures.note("iteration, zero ends", medianError(laboratory, Ends::zero));
    figures.note("iteration, odd ends", odd);
    figures.note("iteration, bridged ends", medianError(laboratory, Ends::bridge));
    figures.atMost("odd over periodic", 1.0 / 3.0, odd / periodic);
    figures.atMost("--auto over periodic", 1.0 / 3.0,
                   medianError(laboratory, std::nullopt) / periodic);
}
