#include "workbench/methods/Method.h"
#include "workbench/reporting/html.h"
#include "workbench/reporting/pages.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <numeric>
#include <set>
#include <string>
#include <utility>
#include <vector>

// Text that would be markup, a script, a placeholder or the end of an element, and a mark by which
// it is found.
static std::string hostile(int mark) {
    return "{1}\"'></title><img src=x onerror=x></script><!--${x}" + std::to_string(mark) + "#";
}

static SignalInfo inputOf(int mark) {
    SignalInfo info;
    info.source = SourceName(hostile(mark));
    info.format = hostile(mark + 1);
    info.sha256 = hostile(mark + 2);
    info.channels = 1;
    info.samples = 5;
    return info;
}

// A record with everything that a page shows, each text another one: marks 10 to 29 and 33.
static RunRecord fullRecord() {
    RunRecord record;
    record.settings.direction = FendraSettings::deconvolution;
    record.settings.method = FendraSettings::vanCittert;
    record.words = hostile(10);
    record.inputs = {inputOf(11), inputOf(14)};
    record.output = SourceName::ofOutput(hostile(17));
    record.module = hostile(18);
    record.moduleVersion = hostile(19);
    record.numberNames = {hostile(20), hostile(21)};
    record.numbers = {{0, 0, {1.0, 2.0}}};
    record.digest = hostile(22);
    record.remarks = {hostile(23)};
    record.error = TruthError{SourceName(hostile(24)), 0.5, 4, 5};
    record.choice.emplace();
    record.choice->rule = hostile(25);
    record.choice->method = hostile(26);
    record.choice->reasons = {hostile(27)};
    record.choice->rerun = hostile(28);
    record.moved = Movement{1, 1.0, 0, hostile(29)};
    record.stopped = true;
    record.stop = StopRecord{3, 9, hostile(33)};
    record.uncertainty.emplace();
    record.responses.resize(2);
    return record;
}

// Its graph, axis and caption have the marks 30 to 32.
static Figure figureOfOnePane() {
    Figure figure;
    figure.panes.emplace_back().x.label = hostile(30);
    Graph graph;
    graph.name = hostile(31);
    graph.values = std::make_shared<const Pyramid>(std::vector<double>{1.0, 2.0, 3.0});
    figure.panes[0].graphs = {graph};
    figure.caption = {hostile(32)};
    return figure;
}

static std::string written(const Page& page, PageLanguage language = PageLanguage::english) {
    PaintedFigure painted;
    painted.bytes =
        "<?xml version=\"1.0\"?>\n<svg viewBox=\"0 0 7 5\"><title>x</title><path d=\"M0 "
        "0\"/></svg>\n";
    painted.frames.resize(1);
    return htmlOf(page, figureOfOnePane(), painted, language);
}

static std::string between(const std::string& text, const std::string& before,
                           const std::string& after) {
    const std::size_t start = text.find(before) + before.size();
    return text.substr(start, text.find(after, start) - start);
}

// The names of the tags in their order, "/p" where an element ends; style and scripts hold none.
static std::vector<std::string> tagsOf(const std::string& html) {
    std::vector<std::string> tags;
    for (std::size_t i = html.find('<'); i != std::string::npos; i = html.find('<', i)) {
        const std::size_t end = html.find('>', i);
        const std::string tag = html.substr(i + 1, end - i - 1);
        const std::string name = tag.substr(0, tag.find_first_of(" \n"));
        if (tag.back() != '/') {
            tags.push_back(name);
        }
        i = name == "style" || name == "script" ? html.find("</" + name, end) : end;
    }
    return tags;
}

// Each element ends where it should, and none loads anything.
static void expectWellFormed(const std::string& html) {
    static const std::set<std::string> alone = {"!DOCTYPE", "meta"};
    static const std::set<std::string> loading = {"img", "object", "link", "a", "iframe", "image"};
    std::vector<std::string> open = {""};
    for (const std::string& tag : tagsOf(html)) {
        EXPECT_FALSE(loading.contains(tag)) << tag;
        if (tag == "/" + open.back()) {
            open.pop_back();
        } else if (!alone.contains(tag)) {
            open.push_back(tag);
        }
    }
    EXPECT_EQ(open.size(), 1U) << "open: " << open.back();
}

static void expectShown(const std::string& html, const std::vector<int>& marks) {
    EXPECT_EQ(html.find("<img"), std::string::npos);
    for (const int mark : marks) {
        EXPECT_NE(html.find(htmlText(hostile(mark))), std::string::npos) << mark;
    }
}

namespace {

class PageIn : public testing::TestWithParam<PageLanguage> {};

}  // namespace

TEST_P(PageIn, ShowsWhatItIsGivenAsTextAlone) {
    const std::string html = written(pageOf(fullRecord()), GetParam());
    expectWellFormed(html);
    EXPECT_EQ(html.find("<title>"), html.rfind("<title>"));
    std::vector<int> marks(20);
    std::iota(marks.begin(), marks.end(), 10);
    marks.insert(marks.end(), {32, 33});
    expectShown(html, marks);
    // Names of axes and graphs stand in the numbers for the script.
    EXPECT_NE(html.find("${x}30#"), std::string::npos);
    EXPECT_NE(html.find("${x}31#"), std::string::npos);
    EXPECT_NE(html.find("stopped after 3 of at most 9 steps"), std::string::npos);
    EXPECT_EQ(html.find("lang=\"en\">" + htmlText(hostile(27))) == std::string::npos,
              GetParam() == PageLanguage::english);
}

INSTANTIATE_TEST_SUITE_P(Languages, PageIn,
                         testing::Values(PageLanguage::english, PageLanguage::german,
                                         PageLanguage::french));

// Nothing but this style and this script is allowed, and nothing is named that could be loaded.
TEST(Page, AllowsItsOwnStyleAndScriptAlone) {
    const std::string html = written(pageOf(fullRecord()));
    EXPECT_EQ(between(html, "Security-Policy\" content=\"", "\">"),
              "default-src 'none'; style-src " +
                  policySource(between(html, "<style>", "</style>")) + "; script-src " +
                  policySource(between(html, "<script>", "</script>")) +
                  "; base-uri 'none'; form-action 'none'");
    for (const char* const loading : {" href=", " style=", "url(", "@import", "https:"}) {
        EXPECT_EQ(html.find(loading), std::string::npos) << loading;
    }
    EXPECT_EQ(html.find("http:"), html.rfind("http://www.w3.org/2000/svg"));
    EXPECT_EQ(html.find("http:"), html.rfind("http:"));
}

TEST(Page, NamesFilesInItsTitleWhateverSignsTheyHold) {
    RunRecord record = fullRecord();
    record.inputs[0].source = SourceName("{1}{0}.csv");
    record.inputs[1].source = SourceName("<b>.csv");
    EXPECT_EQ(between(written(pageOf(record), PageLanguage::german), "<title>", "</title>"),
              "Entfaltung von {1}{0}.csv mit &lt;b&gt;.csv");
}

TEST(Page, LeavesOutWhatARunHasNotAndRowsThatNobodyReads) {
    RunRecord record = fullRecord();
    record.remarks.clear();
    record.stopped = false;
    record.stop.reset();
    record.choice.reset();
    record.moved.reset();
    record.uncertainty.reset();
    record.error.reset();
    record.responses.clear();
    record.numbers.assign(205, {0, 0, {1.0, 2.0}});
    const std::string html = written(pageOf(record));
    for (const PageText text :
         {PageText::remarks, PageText::chosen, PageText::worth, PageText::withoutSearch}) {
        EXPECT_EQ(html.find(pageText(text, PageLanguage::english)), std::string::npos);
    }
    EXPECT_NE(html.find("<p>Rows not shown: 5</p>"), std::string::npos);
}

TEST(Page, ComparesMethodsAlsoOneWithoutAResult) {
    CompareJob job;
    job.signal = std::make_shared<const Signal>(Signal{inputOf(10), {}});
    job.kernel = std::make_shared<const Signal>(Signal{inputOf(13), {}});
    const std::vector<const Method*> methods = Method::of(FendraSettings::deconvolution);
    std::vector<MethodOutcome> outcomes(2);
    outcomes[0].method = methods.at(0);
    outcomes[0].failure = hostile(16);
    outcomes[1].method = methods.at(1);
    outcomes[1].record = fullRecord();
    outcomes[1].misfit = 0.125;
    const std::string html = written(pageOf(job, outcomes, hostile(17)), PageLanguage::french);
    expectWellFormed(html);
    expectShown(html, {10, 11, 12, 13, 14, 15, 16, 17, 20, 21, 22, 23, 27});
    EXPECT_NE(html.find("<td class=\"number\">0.12</td>"), std::string::npos);
}

TEST(Page, ShowsASweep) {
    SweepRecord record;
    record.words = hostile(10);
    record.output = SourceName::ofOutput(hostile(11));
    record.digest = hostile(12);
    record.from = 50.0;
    record.to = 7600.5;
    const std::string html = written(pageOf(record));
    expectWellFormed(html);
    expectShown(html, {10, 11, 12});
    EXPECT_NE(html.find("50 - 7600.5"), std::string::npos);
}
