#include "workbench/window/figureWords.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

// NOLINTBEGIN(cppcoreguidelines-pro-bounds-array-to-pointer-decay): texts for the translator
static const char* const ownWords[] = {
    QT_TRANSLATE_NOOP("Figure", "signal"),
};
// NOLINTEND(cppcoreguidelines-pro-bounds-array-to-pointer-decay)

static void translate(std::string& text) {
    const auto* const known = std::find(std::begin(ownWords), std::end(ownWords), text);
    if (known != std::end(ownWords)) {
        text = QCoreApplication::translate("Figure", *known).toStdString();
    }
}

Figure inPersonsLanguage(Figure figure) {
    for (Pane& pane : figure.panes) {
        translate(pane.title);
        translate(pane.x.label);
        translate(pane.y.label);
        for (Graph& graph : pane.graphs) {
            translate(graph.name);
        }
    }
    return figure;
}
