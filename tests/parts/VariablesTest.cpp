#include "workbench/parts/variables/Conventions.h"
#include "workbench/parts/variables/CoordinateAxis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace {

struct Written final : Attributes {
    std::map<std::string, std::vector<double>> values;
    std::map<std::string, std::vector<std::string>> words;

    std::vector<std::string> names() const override {
        std::vector<std::string> all;
        for (const auto& [name, value] : values) {
            all.push_back(name);
        }
        return all;
    }
    std::vector<double> numbers(const std::string& name) const override {
        return values.contains(name) ? values.at(name) : std::vector<double>();
    }
    std::vector<std::string> texts(const std::string& name) const override {
        return words.contains(name) ? words.at(name) : std::vector<std::string>();
    }
};

struct Points final : SampleRows {
    explicit Points(std::vector<double> all) : points(std::move(all)) {}

    std::size_t read(std::int64_t first, std::int64_t count, double* to) override {
        std::copy_n(points.data() + first, count, to);
        return static_cast<std::size_t>(count);
    }

    std::vector<double> points;
};

}  // namespace

static SignalInfo infoOf(int channels, std::int64_t samples = 3) {
    SignalInfo info;
    info.source = SourceName("f");
    info.channels = channels;
    info.samples = samples;
    return info;
}

TEST(Conventions, KnowTheWordsForARate) {
    for (const char* name : {"rate", "fs", "SR", "sampling_rate", "samplingRate", "Sample Rate",
                             "sampling_frequency"}) {
        SignalInfo info = infoOf(1);
        Written attributes;
        attributes.values[name] = {360};
        describe(info, attributes, "/a/b");
        EXPECT_EQ(info.rate, 360) << name;
    }
    for (const std::vector<double>& wrong :
         {std::vector<double>{0}, {-1}, {std::nan("")}, {HUGE_VAL}, {1, 2}, {1e-320}}) {
        SignalInfo info = infoOf(1);
        Written attributes;
        attributes.values = {{"rate", wrong}, {"heart rate", {60}}};
        describe(info, attributes, "/a/b");
        EXPECT_EQ(info.rate, 0);
        EXPECT_EQ(info.remarks,
                  std::vector<std::string>{"f: the attribute rate is not a rate in Hz: left out"});
    }
}

TEST(Conventions, NameChannelsWithTheirUnits) {
    using Texts = std::vector<std::string>;
    const auto named = [](int channels, const Texts& names, const Texts& units) {
        SignalInfo info = infoOf(channels);
        Written attributes;
        attributes.words = {{"names", names}, {"units", units}};
        describe(info, attributes, "/run 3/voltage");
        return info.names;
    };
    EXPECT_EQ(named(1, {}, {}), Texts{"voltage"});
    EXPECT_EQ(named(1, {}, {"mV"}), Texts{"voltage (mV)"});
    EXPECT_EQ(named(2, {}, {}), Texts());
    EXPECT_EQ(named(2, {}, {"mV"}), (Texts{"voltage_1 (mV)", "voltage_2 (mV)"}));
    EXPECT_EQ(named(2, {"a", "b"}, {"V", ""}), (Texts{"a (V)", "b"}));
    EXPECT_EQ(named(2, {"a"}, {"V", "A", "W"}), (Texts{"voltage_1 (V)", "voltage_2 (V)"}));
}

// Beside a rate, start and direction are those of a time; else the axis is what it is called.
TEST(Conventions, TakeAnAxisThatIsWrittenOut) {
    SignalInfo info = infoOf(1);
    Written attributes;
    attributes.values = {{"axis_start", {3}}, {"axis_step", {-0.5}}};
    attributes.words["axis"] = {"energy (eV)"};
    describe(info, attributes, "a");
    ASSERT_TRUE(info.axis);
    EXPECT_EQ(info.axis->name, "energy (eV)");
    EXPECT_EQ(std::pair(info.axis->start, info.axis->step), std::pair(3.0, -0.5));
    EXPECT_FALSE(info.axis->time);
    attributes.values["rate"] = {4};
    describe(info, attributes, "a");
    EXPECT_EQ(info.axis->step, -0.25);
    EXPECT_TRUE(info.axis->time);
    attributes.values["axis_step"] = {0};
    info = infoOf(1);
    describe(info, attributes, "a");
    EXPECT_FALSE(info.axis);
}

TEST(CoordinateAxis, GivesARateWhereItsUnitIsKnown) {
    struct Case {
        const char *name, *unit;
        std::vector<double> points;
        bool narrow;
        double rate;
    };
    std::vector<double> tenths, milliseconds;
    for (int i = 0; i < 100; ++i) {
        tenths.push_back(static_cast<double>(static_cast<float>(i) * 0.1F));
        milliseconds.push_back(i / 0.36);
    }
    for (const Case& each :
         {Case{"time", "s", tenths, true, 10}, Case{"t", "ms", milliseconds, false, 360},
          Case{"time", "hours since 1970-01-01", {5, 5.5, 6}, false, 1.0 / 1800},
          Case{"time", "", {0, 0.25, 0.5}, false, 4},
          Case{"frequency", "Hz", {0, 0.25, 0.5}, false, 0},
          Case{"depth", "m", {3, 2, 1}, false, 0}}) {
        SignalInfo info = infoOf(1, std::ssize(each.points));
        Points points(each.points);
        setAxis(info, each.name, each.unit, points, each.narrow);
        EXPECT_NEAR(info.rate, each.rate, 1e-15) << each.name;
        EXPECT_TRUE(info.axis && info.axis->time == (each.rate > 0) &&
                    (info.axis->step < 0) == (each.points[1] < each.points[0]))
            << each.name;
    }
}

TEST(CoordinateAxis, IsLeftOutWhereItIsUneven) {
    SignalInfo info = infoOf(1);
    Points uneven({0, 1, 3});
    setAxis(info, "time", "s", uneven, false);
    EXPECT_FALSE(info.axis);
    EXPECT_EQ(info.remarks,
              std::vector<std::string>{"f: the axis time (s) is not evenly spaced: left out"});
}
