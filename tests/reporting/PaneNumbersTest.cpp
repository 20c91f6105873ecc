#include "workbench/reporting/paneNumbers.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

using Json = nlohmann::ordered_json;

static constexpr double infinity = std::numeric_limits<double>::infinity();

static std::shared_ptr<const Pyramid> pyramid(std::vector<double> values) {
    return std::make_shared<const Pyramid>(std::move(values));
}

static Json numbersOf(const Graph& graph) {
    Figure figure;
    figure.panes.emplace_back().graphs = {graph};
    PaintedFigure painted;
    painted.frames = {{1.0, 2.0, 30.0, 40.0, 5.0, 6.0, 7.0, 8.0}};
    return paneNumbers(figure, painted).at(0).at("graphs").at(0);
}

TEST(PaneNumbers, GiveFewSamplesAsTheyAre) {
    Graph graph;
    graph.name = "a";
    graph.values = pyramid({1.0 / 3.0, std::nan(""), infinity, -infinity, 1e300});
    graph.lower = pyramid({0, 0, 0, 0, 0});
    graph.upper = pyramid({1, 1, 1, 1, 2});
    graph.start = -2.0;
    graph.step = 0.25;
    EXPECT_EQ(numbersOf(graph).dump(),
              R"({"name":"a","start":-2.0,"step":0.25,"low":[0.333333,null,"inf","-inf",1e+300],)"
              R"("lower":[0.0,0.0,0.0,0.0,0.0],"upper":[1.0,1.0,1.0,1.0,2.0]})");
    graph.places = {1, 2, 4, 8, 16};
    EXPECT_EQ(numbersOf(graph).at("places"), Json({1.0, 2.0, 4.0, 8.0, 16.0}));
    EXPECT_FALSE(numbersOf(graph).contains("start"));
}

TEST(PaneNumbers, SayWhereThePanesAre) {
    Figure figure;
    Pane& pane = figure.panes.emplace_back();
    pane.x = {"time (s)", true};
    pane.linked = true;
    PaintedFigure painted;
    painted.frames = {{1.0, 2.0, 30.0, 40.0, 5.0, 6.0, 7.0, 8.0}};
    EXPECT_EQ(paneNumbers(figure, painted), Json::array({{{"frame", {1.0, 2.0, 30.0, 40.0}},
                                                          {"x", {5.0, 6.0}},
                                                          {"log", true},
                                                          {"label", "time (s)"},
                                                          {"linked", true},
                                                          {"graphs", Json::array()}}}));
}

static std::vector<double> unevenSamples(std::size_t size) {
    std::vector<double> samples(size);
    for (std::size_t i = 0; i < size; ++i) {
        samples[i] = static_cast<double>(i * 7919 % 1009);
    }
    samples[size / 3] = 5000.0;
    return samples;
}

namespace {

class LongGraph : public testing::TestWithParam<std::size_t> {};

}  // namespace

// Each sample lies between the extremes of the column at its place, and each extreme is a sample
// there.
TEST_P(LongGraph, HidesNoSampleInAColumn) {
    const std::vector<double> samples = unevenSamples(GetParam());
    Graph graph;
    graph.start = 100.0;
    graph.step = 0.5;
    graph.values = pyramid(samples);
    const Json numbers = numbersOf(graph);
    const std::size_t count = numbers["low"].size();
    ASSERT_LE(count, 2000U);
    std::vector<double> least(count, infinity), most(count, -infinity);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double place = 100.0 + 0.5 * static_cast<double>(i);
        const double column =
            (place - numbers["start"].get<double>()) / numbers["step"].get<double>();
        const auto j = static_cast<std::size_t>(std::floor(column + 0.5));
        ASSERT_LT(j, count);
        least[j] = std::fmin(least[j], samples[i]);
        most[j] = std::fmax(most[j], samples[i]);
    }
    EXPECT_EQ(numbers["low"], Json(least));
    EXPECT_EQ(numbers.value("high", numbers["low"]), Json(most));
}

INSTANTIATE_TEST_SUITE_P(AroundTheEdgesOfColumns, LongGraph,
                         testing::Values(1999, 2000, 2001, 4000, 4001, 100003));
