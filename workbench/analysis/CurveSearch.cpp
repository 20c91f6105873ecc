#include "workbench/analysis/CurveSearch.h"

#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <map>

namespace {

// Points by their parameter, which settle has rounded to one of those that can be told apart.
class Valley {
public:
    Valley(const AnswerCurve& answerCurve, const std::optional<NoiseModel>& noiseModel,
           double (*settleParameter)(double))
        : curve(answerCurve), noise(noiseModel), settle(settleParameter) {}

    void surveyed(double first, double last) {
        constexpr int count = 200;
        for (int i = 0; i < count; ++i) {
            add(first * std::pow(last / first, i / (count - 1.0)));
        }
    }

    void refined() {
        for (std::size_t known = 0; known < points.size();) {
            known = points.size();
            const auto best = lowest();
            const double middle = best->first;
            const double below = best == points.begin() ? middle : std::prev(best)->first;
            const double above = std::next(best) == points.end() ? middle : std::next(best)->first;
            constexpr int parts = 10;
            for (int i = 1; i < parts; ++i) {
                add(below + (middle - below) * i / parts);
                add(middle + (above - middle) * i / parts);
            }
        }
    }

    [[nodiscard]] CurveSearch result() const {
        CurveSearch search{.best = lowest()->second, .points = {}};
        for (const auto& [parameter, point] : points) {
            search.points.push_back(point);
        }
        return search;
    }

private:
    using Points = std::map<double, CurvePoint>;

    void add(double parameter) {
        const double settled = settle(parameter);
        if (!points.contains(settled)) {
            points[settled] = curve.at(settled, noise);
        }
    }

    // The first one if none is a number.
    [[nodiscard]] Points::const_iterator lowest() const {
        auto best = points.begin();
        for (auto it = points.begin(); it != points.end(); ++it) {
            const double criterion = it->second.criterion;
            if (criterion < best->second.criterion || std::isnan(best->second.criterion)) {
                best = it;
            }
        }
        return best;
    }

    const AnswerCurve& curve;
    const std::optional<NoiseModel>& noise;
    double (*settle)(double);
    Points points;
};

}  // namespace

static CurveSearch search(Valley valley, double first, double last) {
    valley.surveyed(first, last);
    valley.refined();
    return valley.result();
}

static double wholeNumber(double value) {
    return std::round(value);
}

CurveSearch searchSteps(const IterationCurve& curve, const std::optional<NoiseModel>& noise,
                        std::int64_t last) {
    return search(Valley(curve, noise, wholeNumber), 1.0, static_cast<double>(last));
}

static double threeDigits(double value) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, 2);
    std::from_chars(text.data(), end.ptr, value);
    return value;
}

CurveSearch searchStrength(const RegularizedCurve& curve, const std::optional<NoiseModel>& noise) {
    return search(Valley(curve, noise, threeDigits), weakestStrength, greatestStrength);
}
