#include "tests/library/Handle.h"
#include "tests/support/HostArithmetic.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/setVariable.h"

#include <algorithm>
#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <sstream>

// Whether the results differ from each other by roundings only.
static void expectNear(const Signal& result, const Signal& expected, double bound) {
    ASSERT_EQ(result.size(), expected.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        EXPECT_NEAR(result[i], expected[i], bound) << i;
    }
}

static Signal linearFold(const Signal& a, const Signal& b) {
    std::vector<long double> sums(a.size() + b.size() - 1, 0.0L);
    for (std::size_t i = 0; i < a.size(); ++i) {
        for (std::size_t k = 0; k < b.size(); ++k) {
            sums[i + k] += static_cast<long double>(a[i]) * static_cast<long double>(b[k]);
        }
    }
    return {sums.begin(), sums.end()};
}

TEST(LibraryResults, AreTheDefiningSums) {
    const Signal a = noise(100, 1), b = noise(9, 2);
    const double bound = 100 * std::numeric_limits<double>::epsilon();
    const Handle handle = openHandle({{"origin", "none"}});
    expectNear(convolved(handle, a, b), periodicFold(a, b), bound);
    expectNear(convolved(handle, b, a), periodicFold(a, b), bound);
    EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), "pad", ""));
    expectNear(convolved(handle, a, b), linearFold(a, b), bound);
    EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), "pad", nullptr));
    EXPECT_EQ(FENDRA_OK, fendra_set(handle.get(), "domain", "time"));
    EXPECT_EQ(convolved(handle, a, b), laggingFold(a, b));
}

TEST(LibraryResults, ADeconvolutionTakesTheKernelOut) {
    const Signal a = noise(64, 1), peaked = {1.0, 0.25, 0.125};
    const Handle handle = openHandle();
    ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, periodicFold(a, peaked), peaked));
    expectNear(resultOf(handle), a, 64 * std::numeric_limits<double>::epsilon());
}

static Signal joined(const Signal& left, const Signal& right) {
    Signal both;
    for (std::size_t i = 0; i < left.size(); ++i) {
        both.insert(both.end(), {left[i], right[i]});
    }
    return both;
}

TEST(LibraryResults, ChannelsStandSideBySide) {
    const Signal left = noise(64, 1), right = noise(64, 2), kernel = noise(8, 3);
    const Signal both = joined(left, right), kernels = joined(kernel, kernel);
    const Handle one = openHandle(), two = openHandle();
    ASSERT_EQ(FENDRA_OK,
              fendra_convolve_channels(two.get(), both.data(), 64, 2, kernel.data(), 8, 1));
    EXPECT_EQ(2U, fendra_channels(two.get()));
    EXPECT_EQ(64U, fendra_length(two.get()));
    const Signal left1 = convolved(one, left, kernel);
    EXPECT_EQ(resultOf(two), joined(left1, convolved(one, right, kernel)));

    ASSERT_EQ(FENDRA_OK,
              fendra_deconvolve_channels(two.get(), both.data(), 64, 2, kernels.data(), 8, 2));
    ASSERT_EQ(FENDRA_OK, run(one, Direction::deconvolve, left, kernel));
    const Signal left2 = resultOf(one);
    ASSERT_EQ(FENDRA_OK, run(one, Direction::deconvolve, right, kernel));
    EXPECT_EQ(resultOf(two), joined(left2, resultOf(one)));
}

TEST(LibraryResults, BoundsLieOnEitherSideWhereTheyWereAskedFor) {
    const double *lower = nullptr, *upper = nullptr;
    const Handle handle = openHandle({{"method", "regularized"}, {"uncertainty", ""}});
    ASSERT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()))
        << fendra_message(handle.get());
    ASSERT_EQ(FENDRA_OK, fendra_band(handle.get(), &lower, &upper));
    Signal middles;
    std::transform(
        lower, lower + 64, upper, std::back_inserter(middles),
        [](double low, double high) { return low < high ? (low + high) / 2 : HUGE_VAL; });
    expectNear(middles, resultOf(handle), 1e-12);
    convolved(handle, lines(), peak());
    ASSERT_EQ(FENDRA_OK, fendra_band(handle.get(), &lower, &upper));
    EXPECT_TRUE(lower == nullptr && upper == nullptr);
}

TEST(LibraryResults, AreIndependentOfTheArithmeticOfTheThread) {
    const Signal signal = measured(), kernel = peak();
    const auto record = [&] {  // with the digest of all samples
        const Handle handle = openHandle({{"method", "regularized"}});
        EXPECT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, signal, kernel));
        return std::string(fendra_record(handle.get()));
    };
    const std::string expected = record();
    for (const HostArithmetic::Mode& mode : HostArithmetic::modes()) {
        const HostArithmetic host(mode);
        EXPECT_EQ(record(), expected);
        EXPECT_EQ(std::fegetround(), mode.rounding);
    }
}

// Such as a program in German may have set for all that it prints.
TEST(LibraryResults, NumbersOfOptionsHaveAPointInAnyLocale) {
    const TemporaryFolder folder;
    const std::string locale = folder.path("comma");
    setVariable("LOCPATH", folder.path("").c_str());
    if (std::system(("localedef -i de_DE -f ISO-8859-1 " + locale + " 2> /dev/null").c_str()) !=
            0 ||
        std::setlocale(LC_ALL, "comma") == nullptr) {
        GTEST_SKIP() << "needs the sources of locales";
    }
    const Handle handle = openHandle(
        {{"rate", "44100.5"}, {"gain", "-0.5"}, {"method", "regularized"}, {"strength", "0.125"}});
    EXPECT_EQ(FENDRA_OK, run(handle, Direction::deconvolve, measured(), peak()));
    const std::string record = fendra_record(handle.get());
    for (const char* number : {"44100.5", "-0.5", "0.125"}) {
        EXPECT_NE(record.find(number), std::string::npos) << record;
    }
    std::setlocale(LC_ALL, "C");
}

namespace {

struct Case {
    Direction direction;
    Options options;
};

class SameAsTheProgram : public testing::TestWithParam<Case> {};

}  // namespace

static std::string words(const Case& some) {
    std::string line = some.direction == Direction::convolve ? "convolve" : "deconvolve";
    for (const auto& [option, value] : some.options) {
        line += " --" + option;
        line += value.empty() ? "" : " " + value;
    }
    return line;
}

static std::string textOf(const Signal& signal) {
    std::ostringstream text;
    text.precision(17);
    for (const double value : signal) {
        text << value << "\n";
    }
    return text.str();
}

// What a record says of settings, samples and choices; not of files, nor of the command line.
static std::string essence(const std::string& whole) {
    const std::string record = whole.substr(0, whole.find("\"rerun\""));
    const std::size_t settings = record.find("\"settings\""), files = record.find("\"inputs\""),
                      result = record.find("\"minimum\"");
    EXPECT_TRUE(settings < files && files < result &&
                record.find("\"sha256\"", result) < record.size())
        << record;
    return record.substr(settings, files - settings) +
           record.substr(std::min(result, record.size()));
}

TEST_P(SameAsTheProgram, InSettingsDigestChoiceAndRemarks) {
    const Case& some = GetParam();
    const Signal signal = some.direction == Direction::convolve ? lines() : measured();
    const TemporaryFolder folder;
    folder.write("signal", textOf(signal));
    folder.write("kernel", textOf(peak()));
    const std::string line = "cd '" + folder.path("") + "' && '" FENDRA_TEST_PROGRAMS "/fendra' " +
                             words(some).insert(words(some).find('v') + 5, " signal kernel ") +
                             " -o result.csv --json > record";
    ASSERT_EQ(0, std::system(line.c_str())) << line;

    const Handle handle = openHandle(some.options);
    ASSERT_EQ(FENDRA_OK, run(handle, some.direction, signal, peak()))
        << fendra_message(handle.get());
    EXPECT_EQ(essence(fendra_record(handle.get())), essence(folder.read("record")));
}

static std::vector<Case> cases() {
    std::vector<Case> all;
    for (const Options& options :
         std::vector<Options>{{},
                              {{"domain", "time"}},
                              {{"pad", ""}, {"origin", "2"}},
                              {{"domain", "time"}, {"pad", ""}},
                              {{"pad", ""}, {"block", "16"}, {"jobs", "2"}},
                              {{"block", "32"}, {"circular", ""}},
                              {{"gain", "normalize"}, {"rate", "44100.5"}}}) {
        all.push_back({Direction::convolve, options});
    }
    for (const Options& options : std::vector<Options>{
             {},
             {{"auto", ""}},
             {{"auto", ""}, {"ends", "zero"}, {"noise", "0.001"}},
             {{"method", "van-cittert"}, {"max-iterations", "12"}},
             {{"method", "van-cittert"}, {"convergence", "auto"}, {"max-iterations", "auto"}},
             {{"method", "van-cittert"}, {"oversample", "4"}, {"stop-at-minimum", "off"}},
             {{"method", "pseudo-inverse"}, {"scaling", "magnitude"}},
             {{"method", "regularized"}, {"uncertainty", ""}},
             {{"method", "regularized"}, {"strength", "1e-3"}, {"order", "0"}, {"ends", "odd"}},
             {{"auto", ""}, {"frequencies", "50:300"}, {"rate", "1000"}, {"keep", "0:0.03"}}}) {
        all.push_back({Direction::deconvolve, options});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(OverAllMethods, SameAsTheProgram, testing::ValuesIn(cases()));
