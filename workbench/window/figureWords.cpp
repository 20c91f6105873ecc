#include "workbench/window/figureWords.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

// NOLINTBEGIN(cppcoreguidelines-pro-bounds-array-to-pointer-decay): texts for the translator
static const char* const ownWords[] = {
    QT_TRANSLATE_NOOP("Figure", "Signal"),
    QT_TRANSLATE_NOOP("Figure", "Signals"),
    QT_TRANSLATE_NOOP("Figure", "Signal and result"),
    QT_TRANSLATE_NOOP("Figure", "Residual: result convolved with the kernel, less signal"),
    QT_TRANSLATE_NOOP("Figure", "Kernel"),
    QT_TRANSLATE_NOOP("Figure", "Spectra"),
    QT_TRANSLATE_NOOP("Figure", "Choice of the number of steps"),
    QT_TRANSLATE_NOOP("Figure", "Choice of the strength"),
    QT_TRANSLATE_NOOP("Figure", "sample"),
    QT_TRANSLATE_NOOP("Figure", "time (s)"),
    QT_TRANSLATE_NOOP("Figure", "cycles per sample"),
    QT_TRANSLATE_NOOP("Figure", "frequency (Hz)"),
    QT_TRANSLATE_NOOP("Figure", "magnitude"),
    QT_TRANSLATE_NOOP("Figure", "value"),
    QT_TRANSLATE_NOOP("Figure", "steps"),
    QT_TRANSLATE_NOOP("Figure", "strength"),
    QT_TRANSLATE_NOOP("Figure", "criterion"),
    QT_TRANSLATE_NOOP("Figure", "result"),
    QT_TRANSLATE_NOOP("Figure", "noise"),
    QT_TRANSLATE_NOOP("Figure", "known"),
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
