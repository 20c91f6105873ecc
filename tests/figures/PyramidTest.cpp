#include "workbench/figures/Pyramid.h"

#include "workbench/figures/places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <utility>

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

static Pyramid::Extremes plainExtremes(const std::vector<double>& samples, std::size_t first,
                                       std::size_t last) {
    Pyramid::Extremes found;
    for (std::size_t i = first; i < last; ++i) {
        found.lowest = std::fmin(found.lowest, samples[i]);
        found.highest = std::fmax(found.highest, samples[i]);
    }
    return found;
}

static bool same(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// Stretches with NaN and infinities, at lengths on both sides of every edge of a level.
TEST(Pyramid, HasTheExtremesOfEveryStretch) {
    std::mt19937 engine(5);
    for (const std::size_t size : {0U, 1U, 2U, 7U, 8U, 9U, 63U, 64U, 65U, 1000U}) {
        std::vector<double> samples(size);
        for (double& sample : samples) {
            const auto kind = engine() % 12;
            sample = kind == 0   ? notANumber
                     : kind == 1 ? infinity
                     : kind == 2 ? -infinity
                                 : static_cast<double>(engine() % 1000) - 500.0;
        }
        const Pyramid pyramid(samples);
        for (int trial = 0; trial < 2000; ++trial) {
            const std::size_t first = engine() % (size + 1);
            const std::size_t last = first + engine() % (size - first + 1);
            const Pyramid::Extremes expected = plainExtremes(samples, first, last);
            const Pyramid::Extremes found = pyramid.extremes(first, last);
            ASSERT_TRUE(same(expected.lowest, found.lowest) &&
                        same(expected.highest, found.highest))
                << size << ": " << first << " to " << last;
        }
    }
}

TEST(Pyramid, RangesOverNumbersThatAreFinite) {
    EXPECT_EQ(-2.0, Pyramid({notANumber, -2.0, infinity, 3.0}).finiteRange().lowest);
    EXPECT_EQ(3.0, Pyramid({notANumber, -2.0, -infinity, 3.0}).finiteRange().highest);
    for (const auto& none : {std::vector<double>(), {notANumber, infinity, -infinity}}) {
        EXPECT_TRUE(std::isnan(Pyramid(none).finiteRange().lowest));
    }
}

// The column that has the outlier reaches up to it, and no other does.
static void expectOneColumnAtOutlier(const Pyramid& pyramid, std::size_t place, std::size_t begin,
                                     std::size_t stretch, std::size_t columns) {
    const auto edge = [=](std::size_t column) {
        return begin + static_cast<std::size_t>(std::uint64_t{stretch} * column / columns);
    };
    int seen = 0;
    for (std::size_t column = 0; column < columns; ++column) {
        const std::size_t first = edge(column), last = edge(column + 1);
        const bool shown = pyramid.extremes(first, last).highest == 1.0;
        EXPECT_EQ(first <= place && place < last, shown) << stretch << ' ' << column;
        seen += shown ? 1 : 0;
    }
    EXPECT_EQ(1, seen) << stretch << " in " << columns;
}

// A picture of any stretch, at any width.
TEST(Pyramid, ShowsASingleOutlierAmongTenMillionAtEveryZoom) {
    constexpr std::size_t size = 10000000, place = 7654321;
    std::vector<double> samples(size);
    samples[place] = 1.0;
    const Pyramid pyramid(std::move(samples));
    for (std::size_t stretch = 1; stretch / 2 < size; stretch *= 2) {
        const std::size_t begin = place - std::min(place, stretch / 3);
        for (const std::size_t columns : {1U, 3U, 1000U, 1920U}) {
            expectOneColumnAtOutlier(pyramid, place, begin, stretch, columns);
        }
    }
}

static void expectCountsAtSample(const Graph& graph, std::size_t i) {
    const double place = placeOf(graph, i);
    EXPECT_EQ(i, samplesBefore(graph, place));
    EXPECT_EQ(i + 1, samplesBefore(graph, std::nextafter(place, infinity)));
    EXPECT_EQ(i, nearestSample(graph, place + 1e-3));
}

static void expectCountsOutside(const Graph& graph) {
    EXPECT_EQ(0U, samplesBefore(graph, -infinity));
    EXPECT_EQ(1000U, samplesBefore(graph, infinity));
    EXPECT_EQ(0U, nearestSample(graph, -1e300));
    EXPECT_EQ(999U, nearestSample(graph, 1e300));
}

// Steps that no double holds: the count is that of the places as they are computed.
TEST(Places, CountWhatStandsBefore) {
    Graph even, uneven;
    even.values = uneven.values = std::make_shared<const Pyramid>(std::vector<double>(1000, 0.0));
    even.start = -33.3;
    even.step = 0.1;
    for (std::size_t i = 0; i < 1000; ++i) {
        uneven.places.push_back(std::pow(1.01, static_cast<double>(i)));
    }
    for (const Graph& graph : {even, uneven}) {
        for (std::size_t i = 0; i < 1000; ++i) {
            expectCountsAtSample(graph, i);
        }
        expectCountsOutside(graph);
    }
}
