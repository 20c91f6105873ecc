#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/signals/Signal.h"

#include <gtest/gtest.h>

#include <cmath>

static Signal readJcamp(const std::string& path) {
    return Signal::of(*openSignal(SourceName(path), {}));
}

// A block with these labels, among them the table.
static std::string block(const std::string& labels, const std::string& title = "sample") {
    std::string all = "##TITLE= ";
    all += title;
    all += "\n##JCAMP-DX= 4.24 $$ by hand\n##DATA TYPE= INFRARED SPECTRUM\n";
    return all + labels + "##END=\n";
}

static std::string spectrum(const std::string& first, const std::string& last, int points,
                            const std::string& table) {
    return "##XUNITS= 1/CM\n##YUNITS= ABSORBANCE\n##FIRSTX= " + first + "\n##LASTX= " + last +
           "\n##NPOINTS= " + std::to_string(points) + "\n##XYDATA= (X++(Y..Y))\n" + table;
}

namespace {

struct Form {
    const char* name;
    std::string table;
};

class JcampForms : public testing::TestWithParam<Form> {};

}  // namespace

// The ten values of the forms of McDonald and Wilks, in each of them; then the same with the table
// cut in two, where differences repeat a value.
TEST_P(JcampForms, GiveTheSameValues) {
    const TemporaryFolder folder;
    const Signal read =
        readJcamp(folder.write("s.jdx", block(spectrum("400", "418", 10, GetParam().table))));
    EXPECT_EQ(read.interleaved, (std::vector<double>{1, 2, 3, 3, 2, 1, 0, -1, -2, -3}));
    EXPECT_EQ(read.info.format, "JCAMP-DX 4.24");
    EXPECT_EQ(read.info.axis->name, "Wavenumber (1/cm)");
    EXPECT_EQ(read.info.axis->start, 400.0);
    EXPECT_EQ(read.info.axis->step, 2.0);
    EXPECT_EQ(read.info.rate, 0.0);
    EXPECT_EQ(read.info.names, std::vector<std::string>{"ABSORBANCE"});
}
INSTANTIATE_TEST_SUITE_P(
    All, JcampForms,
    testing::Values(Form{"Affn", "400 1 2 3 3 2 1 0 -1 -2 -3\n"},
                    Form{"AffnWithExponents",
                         "4.00E+02, 1.0 2E+00 3 3.0e+0 2 1 0 -.1E+1 -2.\t-3 $$ end\n"},
                    Form{"Pac", "400+1+2+3+3+2+1+0-1-2-3\n"}, Form{"Sqz", "400ABCCBA@abc\n"},
                    Form{"Dif", "400AJJ%jjjjjj\n"}, Form{"DifDup", "400AJT%jX\n"},
                    Form{"SqzDup", "400ABCTBA@abc\n"},
                    Form{"LinesOfNumbers", "400 1 2 3 3 2\n\n$$ half of it\n410 1 0 -1 -2 -3\n"},
                    Form{"LinesOfDifferences", "400AJJ\n404C%j\r\n408B\n410AjV\n418c\n"}),
    [](const auto& each) { return each.param.name; });

// The published example of differences: 53 points from 599.860 to 700.158 1/cm.
TEST(Jcamp, ReadsThePublishedExample) {
    const TemporaryFolder folder;
    const std::string table =
        "599.860@VKT%TLkj%J%KLJ%njKjL%kL%jJULJ%kLK1%lLMNPNPRLJ0QTOJ1P\n700.158A28\n";
    const Signal read = readJcamp(folder.write(
        "s.dx", block("##YFACTOR= 0.5\n" + spectrum("599.860", "700.158", 53, table))));
    std::vector<double> expected = {0,  0,  0,  0,  2,  4,  4,  4,   7,   5,   4,  4,  5,  5,
                                    7,  10, 11, 11, 6,  5,  7,  6,   9,   9,   7,  10, 10, 9,
                                    10, 11, 12, 15, 16, 16, 14, 17,  38,  38,  35, 38, 42, 47,
                                    54, 59, 66, 75, 78, 88, 96, 104, 110, 121, 128};
    for (double& value : expected) {
        value *= 0.5;
    }
    EXPECT_EQ(read.interleaved, expected);
    EXPECT_NEAR(read.info.axis->step, 1.928808, 1e-6);
}

TEST(Jcamp, ReadsPairsTimesAndFallingAxes) {
    const TemporaryFolder folder;
    const std::string pairs =
        "##XUNITS= SECONDS\n##YLABEL= Detector\n##YUNITS= mV\n##XFACTOR= 0.001\n##NPOINTS= 4\n"
        "##XYPOINTS= (XY..XY)\n-4, 1.5; 0, 2\n4 -3;8,1E-3\n";
    const Signal times = readJcamp(folder.write("s.jdx", "\xef\xbb\xbf\n " + block(pairs)));
    EXPECT_EQ(times.interleaved, (std::vector<double>{1.5, 2, -3, 1e-3}));
    EXPECT_EQ(times.info.names, std::vector<std::string>{"Detector (mV)"});
    EXPECT_EQ(times.info.rate, 250.0);
    EXPECT_DOUBLE_EQ(times.info.axis->start, -0.004);
    const Signal falling = readJcamp(
        folder.write("s.jdx", block(spectrum("4000.5", "3999.0", 4, "4001+5+6\n3999.5+7+8\n"))));
    EXPECT_EQ(falling.interleaved, (std::vector<double>{5, 6, 7, 8}));
    EXPECT_EQ(falling.info.axis->start, 4000.5);
    EXPECT_EQ(falling.info.axis->step, -0.5);
}

// Blocks of a LINK, and those that stand one after the other.
TEST(Jcamp, TellsBlocksByTheirTitles) {
    const TemporaryFolder folder;
    const std::string one = block(spectrum("1", "2", 2, "1 5 6\n"), "same"),
                      two = block(spectrum("1", "3", 3, "1 7 8 9\n"), "same");
    const std::string linked =
        "##TITLE= all of them\n##DATA TYPE= LINK\n##BLOCKS= 2\n" + one + two + "##END=\n";
    for (const std::string& file : {one + two, linked}) {
        const std::string path = folder.write("s.jdx", file);
        EXPECT_EQ(readJcamp(path + ":same").interleaved, (std::vector<double>{5, 6}));
        EXPECT_EQ(readJcamp(path + ":same (2)").interleaved, (std::vector<double>{7, 8, 9}));
    }
}

TEST(Jcamp, RefusesByName) {
    struct Case {
        std::string labels, refusal;
    };
    const auto table = [](const std::string& lines) { return spectrum("1", "4", 4, lines); };
    const std::string pairs = "##NPOINTS= 3\n##XYPOINTS= (XY..XY)\n";
    const TemporaryFolder folder;
    for (const Case& each :
         {Case{"##NTUPLES= NMR FID\n##PAGE= N=1\n", "as NTUPLES"},
          Case{"##PEAK TABLE= (XY..XY)\n1 2\n", "a table of peaks"},
          Case{"##RADATA= (R++(A..A))\n1 2\n", "an interferogram"},
          Case{"##XYDATA= (X++(R..R))\n1 2\n", "of the form (X++(R..R))"},
          Case{"##ORIGIN= here\n", "no table of points"},
          Case{"##XYDATA= (X++(Y..Y))\n1 2\n", "how many points"},
          Case{"##NPOINTS= 4\n##FIRSTX= 1\n##XYDATA= (X++(Y..Y))\n1 2\n", "begins and ends"},
          Case{"##YFACTOR= much\n" + table("1 1 2 3 4\n"), "has a YFACTOR that is not a number"},
          Case{spectrum("1", "2", 999999999, "1 1\n"), "more than a file of its length"},
          Case{table("1 1 2 3\n"), "ends after 3 points, but NPOINTS declares 4"},
          Case{table("1 1 2 3 4 5\n"), "more than the 4 points"},
          Case{table("1 1\n3 3 4\n"), "line 11: x is 3, but 2"},
          Case{table("1AJJJ\n4C\n"), "y is 3, but 4"},
          Case{table("1AJ\n2J\n"), "\"J\" has no number before it"},
          Case{table("1J\n"), "\"J\" has no number before it"},
          Case{table("1S\n"), "\"S\" has no number before it"},
          Case{table("1AZ99\n"), "more than the 4 points"},
          Case{table("1AJJ\n3\n"), "a number is expected"},
          Case{table("1 1 ? 3 4\n"), "was not measured"},
          Case{table("1 1 2 & 4\n"), "\"&\" is not a number"},
          Case{table("1 1 2 - 4\n"), "\"-\" is not a number"},
          Case{"##YFACTOR= 1E+300\n" + table("1 1 2 3 1E+300\n"), "too large for a double"},
          Case{pairs + "1 1\n2 2\n4 3\n", "the points are not evenly spaced"},
          Case{pairs + "1 1\n2 2\n1 3\n", "not evenly spaced at number 3, x = 1"},
          Case{pairs + "1 1\n2 2\n", "ends after 2 points"}}) {
        const std::string path = folder.write("s.jdx", block(each.labels));
        const std::string failure = failureOf([&] { openSignal(SourceName(path), {}); });
        EXPECT_NE(failure.find(each.refusal), std::string::npos) << each.refusal << ": " << failure;
    }
}

TEST(Jcamp, RefusesTruncatedFiles) {
    const TemporaryFolder folder;
    const std::string whole = block(spectrum("1", "4", 4, "1AJJ\n3C 4\n"));
    ASSERT_EQ(readJcamp(folder.write("whole", whole)).interleaved,
              (std::vector<double>{1, 2, 3, 4}));
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
        const std::string path = folder.write(std::to_string(length), whole.substr(0, length));
        EXPECT_NE(failureOf([&] { openSignal(SourceName(path), {}); }), "") << length;
    }
}
