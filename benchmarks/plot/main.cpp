#include "workbench/window/FigurePlot.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

// Frame times of figures beside those of plain graphs of QCustomPlot with its adaptive sampling:
// off screen, 1600 x 1000, the median and the slowest of 30 frames.

using Samples = std::shared_ptr<const Pyramid>;

constexpr int frames = 30;

static Samples noisySine(std::size_t size, unsigned seed) {
    std::mt19937 engine(seed);
    std::normal_distribution<double> noise(0.0, 0.3);
    std::vector<double> samples(size);
    for (std::size_t i = 0; i < size; ++i) {
        samples[i] =
            std::sin(20.0 * static_cast<double>(i) / static_cast<double>(size)) + noise(engine);
    }
    return std::make_shared<const Pyramid>(std::move(samples));
}

// As many panes as there are counts of graphs, all linked.
static std::shared_ptr<const Figure> figureOf(const std::vector<std::vector<Samples>>& panes) {
    auto figure = std::make_shared<Figure>();
    for (const std::vector<Samples>& graphs : panes) {
        Pane pane;
        pane.title = "Pane";
        pane.linked = true;
        for (const Samples& samples : graphs) {
            Graph graph;
            graph.role = static_cast<GraphRole>(pane.graphs.size());
            graph.values = samples;
            graph.step = 1.0 / static_cast<double>(samples->size());
            pane.graphs.push_back(graph);
        }
        figure->panes.push_back(std::move(pane));
    }
    return figure;
}

static void fillPlain(QCustomPlot& plot, const Figure& figure) {
    plot.plotLayout()->clear();
    for (std::size_t i = 0; i < figure.panes.size(); ++i) {
        auto* const rect = new QCPAxisRect(&plot);
        plot.plotLayout()->addElement(static_cast<int>(i), 0, rect);
        for (const Graph& graph : figure.panes[i].graphs) {
            QCPGraph* const plain =
                plot.addGraph(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
            QVector<QCPGraphData> data;
            for (std::size_t k = 0; k < graph.values->size(); ++k) {
                data.append({static_cast<double>(k) * graph.step, (*graph.values)[k]});
            }
            plain->data()->set(data, true);
        }
    }
    plot.rescaleAxes();
}

static void show(QCustomPlot& plot, double from, double to) {
    for (QCPAxisRect* const rect : plot.axisRects()) {
        rect->axis(QCPAxis::atBottom)->setRange(from, to);
    }
}

namespace {

struct Times {
    double median, slowest;  // milliseconds
};

}  // namespace

template <typename Move>
static Times timesOf(QCustomPlot& plot, const Move& move) {
    std::vector<double> times;
    for (int frame = 0; frame < frames; ++frame) {
        QElapsedTimer timer;
        timer.start();
        move(frame);
        plot.replot(QCustomPlot::rpImmediateRefresh);
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return {times[frames / 2], times.back()};
}

static void printRow(const char* what, QCustomPlot& plot) {
    plot.resize(1600, 1000);
    plot.show();
    QApplication::processEvents();
    const Times still = timesOf(plot, [](int) {});
    const Times panned =
        timesOf(plot, [&](int frame) { show(plot, 0.01 * frame, 0.7 + 0.01 * frame); });
    const Times zoomed = timesOf(plot, [&](int frame) {
        const double half = 0.5 * std::pow(0.7, frame);
        show(plot, 0.5 - half, 0.5 + half);
    });
    std::printf("%-34s %7.1f %7.1f  %7.1f %7.1f  %7.1f %7.1f\n", what, still.median, still.slowest,
                panned.median, panned.slowest, zoomed.median, zoomed.slowest);
}

static void compare(const char* what, const std::shared_ptr<const Figure>& figure) {
    std::printf("%s\n", what);
    FigurePlot plot;
    plot.setFigure(figure);
    printRow("  figure", plot);
    QCustomPlot plain;
    fillPlain(plain, *figure);
    printRow("  plain", plain);
}

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argumentCount, arguments);
    std::printf("milliseconds a frame, median and slowest %7s %15s %16s\n", "still", "panned",
                "zoomed");
    std::vector<Samples> seven;
    for (unsigned seed = 1; seed <= 7; ++seed) {
        seven.push_back(noisySine(1000000, seed));
    }
    compare("one graph of 1e6 samples", figureOf({{seven[0]}}));
    compare(
        "four panes, seven graphs of 1e6",
        figureOf({{seven[0], seven[1]}, {seven[2]}, {seven[3], seven[4], seven[5]}, {seven[6]}}));
    compare("one graph of 1e7 samples", figureOf({{noisySine(10000000, 8)}}));
    return 0;
}
