#include "workbench/window/FigurePainter.h"
#include "workbench/window/FigurePlot.h"
#include "workbench/window/PlainEnvironment.h"
#include "workbench/window/PyramidGraph.h"

#include <QApplication>
#include <QImage>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

static std::shared_ptr<const Pyramid> pyramidOf(std::vector<double> samples) {
    return std::make_shared<const Pyramid>(std::move(samples));
}

namespace {

// A figure of one pane, painted off screen.
class Plot : public testing::Test {
protected:
    // Kept for all tests: Qt has one application in a process.
    static void SetUpTestSuite() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        static char name[] = "plots-tests";
        static char* arguments[] = {name, nullptr};
        static QApplication application(count, arguments);
    }

    Graph& add(std::vector<double> samples) {
        Graph& graph = figure.panes[0].graphs.emplace_back();
        graph.role = GraphRole::result;
        graph.values = pyramidOf(std::move(samples));
        return graph;
    }

    void show() {
        plot = std::make_unique<FigurePlot>();
        plot->setFigure(std::make_shared<const Figure>(figure));
    }
    QCPAxis& x() { return *plot->pane(0).axis(QCPAxis::atBottom); }
    QCPAxis& y() { return *plot->pane(0).axis(QCPAxis::atLeft); }

    void paint() {
        image = QImage(800, 400, QImage::Format_RGB32);
        QCPPainter painter(&image);
        plot->toPainter(&painter, image.width(), image.height());
    }

    // Whether a point of the pane is of that graph's colour, or near it.
    bool isDrawn(double pixelX, double pixelY) const {
        const QColor colour(image.pixel(static_cast<int>(pixelX), static_cast<int>(pixelY)));
        const QColor graph = PlotColours::light().pen(GraphRole::result, 0).color();
        return std::abs(colour.red() - graph.red()) < 90 && colour.blue() > colour.red() + 30;
    }
    // Rows of a column of pixels that the graph covers.
    int rowsOf(double pixelX) const {
        int rows = 0;
        const QRect pane = plot->pane(0).rect();
        for (int row = pane.top() + 1; row < pane.bottom(); ++row) {
            rows += isDrawn(pixelX, row) ? 1 : 0;
        }
        return rows;
    }

    // Of a band from -1 to 3 around a line at 0.
    void expectBandAt(double place) {
        const int column = static_cast<int>(x().coordToPixel(place));
        const auto at = [&](double value) {
            return QColor(image.pixel(column, static_cast<int>(y().coordToPixel(value)) + 1));
        };
        EXPECT_GT(at(2.8).blue(), at(2.8).red() + 20);
        EXPECT_EQ(at(2.7), at(-0.8));
        EXPECT_GT(at(2.8).lightness(), at(0.0).lightness() + 50);
        EXPECT_EQ(QColor(Qt::white), at(3.15));
    }

    // Four samples from 10 on, and many from 0 to 10.
    void showFewAndMany() {
        add({0.0, 4.0, 0.0, 4.0}).start = 10.0;
        add(std::vector<double>(100000, 2.0)).step = 1e-4;
        show();
        paint();
    }

    Figure figure{{Pane{}}, {}};
    std::unique_ptr<FigurePlot> plot;
    QImage image;
};

}  // namespace

// From the whole to two samples: dense columns, columns of crossing lines, lines, points.
TEST_F(Plot, ShowsASingleOutlierAtEveryZoom) {
    constexpr std::size_t size = 1000000, place = 654321;
    std::vector<double> samples(size);
    samples[place] = 1.0;
    add(std::move(samples));
    show();
    double half = 400000.0;
    while (half > 0.5) {
        x().setRange(place - half, place + 0.7 * half);
        paint();
        const double column = x().coordToPixel(static_cast<double>(place));
        const double top = y().coordToPixel(1.0);
        bool seen = false;
        for (int aside = -1; aside <= 1; ++aside) {
            seen = seen || isDrawn(column + aside, top + 1.0);
        }
        EXPECT_TRUE(seen) << half;
        EXPECT_FALSE(isDrawn(plot->pane(0).left() + 20, top + 1.0)) << half;
        half *= 0.6;
    }
}

// With few samples and with many: what is not a number is a gap, at any density.
TEST_F(Plot, LeavesGapsWhereThereIsNoNumber) {
    for (const std::size_t size : {30U, 2000U, 100000U}) {
        figure.panes[0].graphs.clear();
        std::vector<double> samples(size, 1.0);
        std::fill(samples.begin() + static_cast<std::ptrdiff_t>(size / 3),
                  samples.begin() + static_cast<std::ptrdiff_t>(2 * size / 3), notANumber);
        add(std::move(samples));
        show();
        paint();
        const auto rowsAt = [&](double share) {
            return rowsOf(x().coordToPixel(share * static_cast<double>(size)));
        };
        EXPECT_EQ(0, rowsAt(0.5)) << size;
        EXPECT_LT(0, rowsAt(0.2)) << size;
        EXPECT_LT(0, rowsAt(0.8)) << size;
    }
}

TEST_F(Plot, InfinityStandsOnTheEdgeAndSetsNoRange) {
    for (const std::size_t size : {30U, 100000U}) {
        figure.panes[0].graphs.clear();
        std::vector<double> samples(size);
        for (std::size_t i = 0; i < size; ++i) {
            samples[i] = i % 2 == 0 ? 1.0 : -1.0;
        }
        const std::size_t middle = size / 2;
        samples[middle] = infinity;
        add(std::move(samples));
        show();
        EXPECT_NEAR(1.1, y().range().upper, 0.01);
        EXPECT_NEAR(-1.1, y().range().lower, 0.01);
        paint();
        const double column = x().coordToPixel(static_cast<double>(middle));
        EXPECT_TRUE(isDrawn(column, plot->pane(0).top() + 1)) << size;
    }
}

// Of spectra: zeros and what is far below the top are no reason for an axis of 300 decades.
TEST_F(Plot, LogarithmicAxisHasAGapForZerosAndAnEnd) {
    figure.panes[0].y.logarithmic = true;
    std::vector<double> samples(300, 100.0);
    std::fill(samples.begin() + 100, samples.begin() + 200, 0.0);
    samples[250] = -5.0;
    samples[260] = 1e-300;
    add(samples);
    show();
    EXPECT_LT(1e-12, y().range().lower);
    EXPECT_GT(1.0, y().range().lower);
    paint();
    EXPECT_EQ(0, rowsOf(x().coordToPixel(150.0)));
    EXPECT_LT(0, rowsOf(x().coordToPixel(50.0)));
    int deepest = 0;
    for (int aside = -6; aside <= 6; ++aside) {
        deepest = std::max(deepest, rowsOf(x().coordToPixel(260.0) + aside));
    }
    EXPECT_LT(200, deepest);
}

TEST_F(Plot, BandIsAnAreaUnderTheGraph) {
    for (const std::size_t size : {40U, 50000U}) {
        SCOPED_TRACE(size);
        figure.panes[0].graphs.clear();
        Graph& graph = add(std::vector<double>(size, 0.0));
        graph.lower = pyramidOf(std::vector<double>(size, -1.0));
        graph.upper = pyramidOf(std::vector<double>(size, 3.0));
        show();
        EXPECT_LT(3.0, y().range().upper);
        paint();
        expectBandAt(0.52 * static_cast<double>(size));
    }
}

// Neighbours that are billions of pixels away: the line through the pane is where it should be.
TEST_F(Plot, DrawsTheLineBetweenSamplesFarOutsideThePane) {
    add({-1e6, 1e6}).step = 1e6;
    show();
    x().setRange(500000.0 - 1e-3, 500000.0 + 1e-3);
    y().setRange(-2e-3, 2e-3);
    paint();
    const QRect pane = plot->pane(0).rect();
    EXPECT_TRUE(isDrawn(pane.center().x(), pane.center().y()));
    EXPECT_TRUE(isDrawn(pane.left() + 3, pane.bottom() - 1) ||
                isDrawn(pane.left() + 3, pane.bottom() - 2));
    EXPECT_EQ(pane.width() - 1 > 0, rowsOf(pane.left() + 10) < 8);
    y().setRange(-1e-290, 1e-290);
    x().setRange(-1e200, 1e200);
    paint();  // nothing overflows
}

// Samples at places of their own, with a long way between two of them.
TEST_F(Plot, ConnectsUnevenPlaces) {
    Graph& graph = add(std::vector<double>(2001, 1.0));
    for (int i = 0; i < 2000; ++i) {
        graph.places.push_back(i * 1e-3);
    }
    graph.places.push_back(10.0);
    show();
    paint();
    EXPECT_LT(0, rowsOf(x().coordToPixel(6.0)));
    EXPECT_LT(0, rowsOf(x().coordToPixel(1.0)));
}

TEST_F(Plot, ReadsValues) {
    showFewAndMany();
    const std::vector<FigurePlot::Reading> readings = plot->readingsAt(0, 10.9);
    ASSERT_EQ(1U, readings.size());  // the second graph ends at 10
    EXPECT_EQ(1U, readings[0].sample);
    EXPECT_EQ(11.0, readings[0].x);
    EXPECT_EQ(4.0, readings[0].y);
    EXPECT_TRUE(plot->readingsAt(0, 20.0).empty());
}

TEST_F(Plot, MeasuresDistancesToGraphs) {
    showFewAndMany();
    const auto distance = [&](int graph, double at, double value, double aside) {
        const QPointF point(x().coordToPixel(at), y().coordToPixel(value) + aside);
        return plot->plottable(graph)->selectTest(point, false);
    };
    EXPECT_NEAR(0.0, distance(0, 10.5, 2.0, 0.0), 0.1);
    EXPECT_NEAR(6.0, distance(1, 5.0, 2.0, 6.0), 0.6);
    EXPECT_EQ(-1.0, distance(1, 5.0, 2.0, 30.0));
}

using RolesAndVariants = std::vector<std::pair<GraphRole, int>>;

// By lightness, dashes or width.
static bool differWithoutHue(const QPen& a, const QPen& b) {
    return std::abs(qGray(a.color().rgb()) - qGray(b.color().rgb())) > 25 ||
           a.style() != b.style() || a.widthF() != b.widthF();
}

static void expectToldApart(const PlotColours& colours, const RolesAndVariants& graphs) {
    for (std::size_t i = 0; i < graphs.size(); ++i) {
        const QPen a = colours.pen(graphs[i].first, graphs[i].second);
        EXPECT_LT(35, std::abs(qGray(a.color().rgb()) - qGray(colours.background.rgb())));
        for (std::size_t k = i + 1; k < graphs.size(); ++k) {
            const QPen b = colours.pen(graphs[k].first, graphs[k].second);
            EXPECT_TRUE(differWithoutHue(a, b))
                << static_cast<int>(graphs[i].first) << ' ' << graphs[i].second << ' '
                << static_cast<int>(graphs[k].first) << ' ' << graphs[k].second;
        }
    }
}

// Curves are told apart without hues, and from the background.
TEST_F(Plot, ColoursDifferInMoreThanHue) {
    const std::vector<RolesAndVariants> together = {
        {{GraphRole::signal, 0}, {GraphRole::result, 0}, {GraphRole::known, 0}},
        {{GraphRole::signal, 0},
         {GraphRole::kernel, 0},
         {GraphRole::result, 0},
         {GraphRole::noise, 0}},
        {{GraphRole::result, 0}, {GraphRole::result, 1}},
        {{GraphRole::result, 1}, {GraphRole::result, 2}},
        {{GraphRole::result, 2}, {GraphRole::result, 3}},
        {{GraphRole::result, 3}, {GraphRole::result, 4}}};
    for (const PlotColours& colours : {PlotColours::light(), PlotColours::dark()}) {
        for (const RolesAndVariants& graphs : together) {
            expectToldApart(colours, graphs);
        }
    }
}

TEST_F(Plot, LinkedPanesShowTheSameStretch) {
    figure.panes[0].linked = true;
    figure.panes.push_back(figure.panes[0]);
    figure.panes.emplace_back().kind = PaneKind::kernel;
    for (Pane& pane : figure.panes) {
        pane.graphs.emplace_back().values = pyramidOf({1.0, 2.0, 3.0});
    }
    figure.panes[1].graphs[0].start = 5.0;
    show();
    const auto range = [&](std::size_t pane) {
        return plot->pane(pane).axis(QCPAxis::atBottom)->range();
    };
    EXPECT_EQ(range(0), range(1));
    EXPECT_LT(7.0, range(0).upper);
    EXPECT_GT(3.0, range(2).upper);
    x().setRange(1.0, 2.0);
    EXPECT_EQ(QCPRange(1.0, 2.0), range(1));
    plot->setFigure(std::make_shared<const Figure>(figure));  // of the same kinds: it stays
    EXPECT_EQ(QCPRange(1.0, 2.0), range(1));
}

// The frames of a picture are where its panes were painted, and the stretch is that of the order.
TEST_F(Plot, PicturesSayWhereTheirPanesAre) {
    figure.panes[0].linked = true;
    figure.caption = {std::string(500, 'w'), "second"};
    std::vector<double> samples(1000);
    samples[500] = 1.0;
    add(std::move(samples));
    PictureOrder order;
    order.width = 640;
    order.height = 480;
    order.from = 400.0;
    order.to = 600.0;
    const PaintedFigure painted = FigurePainter(figure, order).paint();
    image.loadFromData(QByteArray::fromStdString(painted.bytes));
    EXPECT_EQ(QSize(640, 480), image.size());
    ASSERT_EQ(1U, painted.frames.size());
    const PaneFrame& frame = painted.frames[0];
    EXPECT_EQ(400.0, frame.lowX);
    EXPECT_EQ(600.0, frame.highX);
    const double column = frame.left + frame.width * 0.5;
    const double row = frame.top + frame.height * (frame.highY - 1.0) / (frame.highY - frame.lowY);
    EXPECT_TRUE(isDrawn(column, row + 1) || isDrawn(column, row + 2) ||
                isDrawn(column - 1, row + 2));
}

// A sine whose second half goes a billion times as far.
static std::vector<double> growingSine(std::size_t size) {
    std::vector<double> samples(size);
    for (std::size_t i = 0; i < size; ++i) {
        samples[i] = std::sin(0.3 * static_cast<double>(i)) * (i < size / 2 ? 1.0 : 1e9);
    }
    return samples;
}

// The points of the lines that have more than two: lines of two may be in the legend.
static std::vector<QPointF> linePointsOf(const QString& svg) {
    const QRegularExpression line("<polyline [^>]*points=\"([^\"]*)\"");
    std::vector<QPointF> points;
    for (QRegularExpressionMatchIterator all = line.globalMatch(svg); all.hasNext();) {
        const QStringList run = all.next().captured(1).split(' ', Qt::SkipEmptyParts);
        for (const QString& point : run.size() > 2 ? run : QStringList()) {
            points.emplace_back(point.section(',', 0, 0).toDouble(),
                                point.section(',', 1, 1).toDouble());
        }
    }
    return points;
}

static void expectWithin(const PaneFrame& frame, const QPointF& point) {
    EXPECT_TRUE(point.x() >= frame.left - 1.0 && point.x() <= frame.left + frame.width + 1.0);
    EXPECT_TRUE(point.y() >= frame.top - 1.0 && point.y() <= frame.top + frame.height + 1.0);
}

static void expectTexts(const QString& svg) {
    for (const char* text :
         {">&lt;title&gt;</text>", ">volts &amp; amperes</text>", ">said below</text>"}) {
        EXPECT_TRUE(svg.contains(text)) << text;
    }
}

// Not every device clips: of a stretch in the middle of what goes far beyond it, nothing is drawn
// outside the pane. The rest of a vector picture is text.
TEST_F(Plot, VectorsStayWithinThePaneAndTextStaysText) {
    figure.panes[0].linked = true;
    figure.panes[0].title = "<title>";
    figure.panes[0].y.label = "volts & amperes";
    figure.caption = {"said below"};
    for (const std::size_t size : {60U, 2000U, 100000U}) {
        figure.panes[0].graphs.clear();
        Graph& graph = add(growingSine(size));
        graph.lower = graph.upper = graph.values;
        PictureOrder order;
        order.format = PictureFormat::svg;
        order.from = 0.3 * static_cast<double>(size);
        order.to = 0.45 * static_cast<double>(size);
        const PaintedFigure painted = FigurePainter(figure, order).paint();
        const QString svg = QString::fromStdString(painted.bytes);
        expectTexts(svg);
        const std::vector<QPointF> points = linePointsOf(svg);
        for (const QPointF& point : points) {
            expectWithin(painted.frames.at(0), point);
        }
        EXPECT_LT(8U, points.size()) << size;
        EXPECT_GT(3000U, points.size()) << size;
    }
}

// Columns are those of the device, of which a screen may have two in a unit.
TEST_F(Plot, StrokesAreThoseOfTheDevicesPixels) {
    std::vector<double> samples(100000);
    samples[50000] = 1.0;
    add(std::move(samples));
    show();
    image = QImage(1600, 800, QImage::Format_RGB32);
    image.setDevicePixelRatio(2.0);
    QCPPainter painter(&image);
    plot->toPainter(&painter, 800, 400);
    painter.end();
    const int row = static_cast<int>(2.0 * y().coordToPixel(0.5));
    const int middle = static_cast<int>(2.0 * x().coordToPixel(50000.0));
    int columns = 0;
    for (int column = middle - 8; column < middle + 8; ++column) {
        columns += isDrawn(column, row) ? 1 : 0;
    }
    EXPECT_GE(3, columns);
    EXPECT_LE(2, columns);
}

// Heights follow a stretch that is asked for, and new panes are shown whole.
TEST_F(Plot, HeightsAreThoseOfTheStretch) {
    figure.panes[0].linked = true;
    std::vector<double> samples(1000, 1.0);
    samples[10] = 100.0;
    samples[700] = -2.0;
    add(samples);
    show();
    EXPECT_LT(100.0, y().range().upper);
    plot->showStretch(600.0, 800.0);
    EXPECT_GT(2.0, y().range().upper);
    EXPECT_GT(-2.0, y().range().lower);
    plot->showStretch(std::nullopt, 900.0);
    EXPECT_EQ(QCPRange(600.0, 900.0), x().range());
    figure.panes.emplace_back().kind = PaneKind::choice;
    plot->setFigure(std::make_shared<const Figure>(figure));
    EXPECT_GT(0.0, x().range().lower);
    EXPECT_LT(100.0, y().range().upper);
}

TEST_F(Plot, ShowsAnythingThatAFigureMayHold) {
    const std::vector<std::vector<double>> all = {{},
                                                  {5.0},
                                                  {0.0, 0.0},
                                                  {notANumber},
                                                  {infinity},
                                                  {-infinity, infinity},
                                                  {1e308, -1e308},
                                                  {5e-324, 1e-323},
                                                  {-1.0, -2.0}};
    for (const bool logarithmic : {false, true}) {
        for (const std::vector<double>& samples : all) {
            figure.panes[0].graphs.clear();
            figure.panes[0].y.logarithmic = logarithmic;
            figure.panes[0].x.logarithmic = logarithmic;
            add(samples).marked = 0;
            show();
            paint();
            EXPECT_LT(0.0, y().range().size());
            EXPECT_LT(0.0, x().range().size());
        }
    }
}

// What the user's surroundings say is away while pictures are made, and back afterwards.
TEST(PlainEnvironment, IsWithoutTheUsersLooks) {
    qputenv("QT_SCALE_FACTOR", "3");
    qputenv("LC_NUMERIC", "de_DE");
    qputenv("TZ", "Asia/Tokyo");
    qputenv("UNRELATED", "kept");
    qunsetenv("LC_ALL");
    {
        const PlainEnvironment plain;
        EXPECT_FALSE(qEnvironmentVariableIsSet("QT_SCALE_FACTOR"));
        EXPECT_FALSE(qEnvironmentVariableIsSet("LC_NUMERIC"));
        EXPECT_EQ("UTC", qgetenv("TZ"));
        EXPECT_EQ("kept", qgetenv("UNRELATED"));
    }
    EXPECT_EQ("3", qgetenv("QT_SCALE_FACTOR"));
    EXPECT_EQ("de_DE", qgetenv("LC_NUMERIC"));
    EXPECT_EQ("Asia/Tokyo", qgetenv("TZ"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("LC_ALL"));
    qunsetenv("QT_SCALE_FACTOR");
}
