#include "workbench/reporting/figures.h"

#include <string>
#include <utility>

static Graph graphOf(const Signal& signal, GraphRole role) {
    Graph graph;
    graph.name = signal.info.source.shown;
    graph.role = role;
    graph.values = std::make_shared<const Pyramid>(channelOf(signal, 0));
    return graph;
}

Figure figureOf(const std::vector<SharedSignal>& signals) {
    Figure figure;
    Pane pane;
    pane.linked = true;
    for (const SharedSignal& signal : signals) {
        pane.graphs.push_back(graphOf(*signal, GraphRole::signal));
    }
    figure.panes.push_back(std::move(pane));
    return figure;
}

Figure figureOf(const SharedSignal& signal, const SharedSignal& kernel, const Outcome& outcome) {
    Figure figure = figureOf({signal});
    figure.panes[0].graphs.push_back(graphOf(outcome.result, GraphRole::result));
    Pane pane;
    pane.kind = PaneKind::kernel;
    pane.graphs = {graphOf(*kernel, GraphRole::kernel)};
    figure.panes.push_back(std::move(pane));
    return figure;
}

Figure figureOf(const CompareJob& job, const std::vector<MethodOutcome>& /*outcomes*/) {
    return figureOf({job.signal});
}
