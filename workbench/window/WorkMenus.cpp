#include "workbench/window/ComparisonTab.h"
#include "workbench/window/WorkPlot.h"
#include "workbench/window/WorkWindow.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

void WorkWindow::addCentre() {
    controls = new WorkControls(
        {[this] { settling.start(); }, [this] { openSignal(); }, [this] { openKernel(); }});
    plot = new WorkPlot({[this](const QString& text) { readout->setText(text); },
                         [this](std::size_t sample) { takeFromCurve(sample); },
                         [this](double from, double to) { takeNoiseFrom(from, to); }});
    plot->setObjectName("plot");
    plot->setAccessibleName(tr("Plot of signal, result and spectra"));
    message = new QLabel;
    message->setObjectName("message");
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    message->setStyleSheet("background: #fde8e8; color: #7a1420; padding: 6px;");
    message->hide();
    summary = new QPlainTextEdit;
    summary->setObjectName("summary");
    summary->setReadOnly(true);
    summary->setTabChangesFocus(true);
    summary->setAccessibleName(tr("What the run did"));

    auto* const seen = new QSplitter(Qt::Vertical);
    seen->addWidget(plot);
    seen->addWidget(summary);
    seen->setStretchFactor(0, 1);
    seen->setSizes({720, 140});
    comparison = new ComparisonTab([this](const QString& text) { readout->setText(text); });
    tabs = new QTabWidget;
    tabs->addTab(seen, tr("Result"));
    tabs->addTab(comparison, tr("Comparison"));

    auto* const right = new QWidget;
    auto* const column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(message);
    column->addWidget(tabs, 1);
    auto* const whole = new QSplitter;
    whole->addWidget(controls);
    whole->addWidget(right);
    whole->setStretchFactor(1, 1);
    setCentralWidget(whole);
    setAcceptDrops(true);
    resize(1280, 960);
}

void WorkWindow::addStatus() {
    commandLine = new QLineEdit;
    commandLine->setObjectName("command-line");
    commandLine->setReadOnly(true);
    commandLine->setAccessibleName(tr("Command line that gives the same result"));
    readout = new QLabel;
    readout->setObjectName("readout");
    readout->setTextFormat(Qt::PlainText);
    progressBar = new QProgressBar;
    progressBar->setObjectName("progress");
    progressBar->setRange(0, 1000);
    progressBar->setAccessibleName(tr("Progress"));
    stopButton = new QPushButton(tr("Stop"));
    stopButton->setObjectName("stop");
    stopButton->setAccessibleName(tr("Stop the run"));
    stopButton->setToolTip(tr("An iteration ends with the estimate so far (Esc)"));
    connect(stopButton, &QPushButton::clicked, this, [this] { runner->stop(); });
    auto* const bar = new QWidget;
    auto* const column = new QVBoxLayout(bar);
    column->setContentsMargins(4, 0, 4, 0);
    auto* const row = new QHBoxLayout;
    readout->setMinimumWidth(1);
    row->addWidget(readout, 1);
    row->addWidget(progressBar);
    row->addWidget(stopButton);
    column->addLayout(row);
    column->addWidget(commandLine);
    statusBar()->addWidget(bar, 1);
}

QAction* WorkWindow::addAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                               std::function<void()> action) {
    QAction* const made = menu.addAction(text);
    made->setShortcut(keys);
    connect(made, &QAction::triggered, this, std::move(action));
    return made;
}

void WorkWindow::addFileMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&File"));
    addAction(menu, tr("Open &signal..."), QKeySequence::Open, [this] { openSignal(); });
    addAction(menu, tr("Open &kernel..."), QKeySequence("Ctrl+K"), [this] { openKernel(); });
    recent = menu.addMenu(tr("&Recent"));
    addRecent();
    menu.addSeparator();
    addAction(menu, tr("Save &result..."), QKeySequence::Save, [this] { saveResult(); });
    addAction(menu, tr("Save &picture..."), QKeySequence("Ctrl+P"), [this] { savePicture(); });
    addAction(menu, tr("Save settings as &graph..."), QKeySequence("Ctrl+G"),
              [this] { saveGraph(); });
    addAction(menu, tr("&Copy command line"), QKeySequence("Ctrl+Shift+C"), [this] {
        showCommandLine();
        QApplication::clipboard()->setText(commandLine->text());
        readout->setText(tr("The command line is in the clipboard."));
    });
    menu.addSeparator();
    addAction(menu, tr("&Quit"), QKeySequence("Ctrl+Q"), [this] { close(); });
}

void WorkWindow::addRunMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Run"));
    addAction(menu, tr("Run &again"), QKeySequence("F5"), [this] { restart(); });
    addAction(menu, tr("&Stop"), QKeySequence("Esc"), [this] { runner->stop(); });
    menu.addSeparator();
    addAction(menu, tr("&Compare all methods"), QKeySequence("F6"), [this] { compare(); });
    addAction(menu, tr("&Keep as A"), QKeySequence("Ctrl+D"), [this] { keep(); });
    flipAction = addAction(menu, tr("&Flip A and B"), QKeySequence("F7"), [this] { flip(); });
    menu.addSeparator();
    noiseAction = addAction(menu, tr("&Noise from a quiet stretch"), QKeySequence("Ctrl+N"),
                            [this] { plot->selectStretch(noiseAction->isChecked()); });
    noiseAction->setCheckable(true);
    noiseAction->setToolTip(tr("Drag over a stretch that is nothing but noise"));
    addAction(menu, tr("&Module settings..."), QKeySequence("Ctrl+M"), [this] { editModule(); });
}

void WorkWindow::addViewMenu() {
    constexpr double closer = 0.7, share = 0.2;
    QMenu& menu = *menuBar()->addMenu(tr("&View"));
    addAction(menu, tr("Zoom &in"), QKeySequence::ZoomIn, [this] { plot->zoom(closer); });
    addAction(menu, tr("Zoom &out"), QKeySequence::ZoomOut, [this] { plot->zoom(1.0 / closer); });
    addAction(menu, tr("To the &left"), QKeySequence("Ctrl+Left"), [this] { plot->pan(-share); });
    addAction(menu, tr("To the &right"), QKeySequence("Ctrl+Right"), [this] { plot->pan(share); });
    addAction(menu, tr("Show &all"), QKeySequence("Ctrl+0"), [this] { plot->showWhole(); });
    menu.addSeparator();
    const std::pair<PaneKind, QString> kinds[] = {{PaneKind::kernel, tr("&Kernel")},
                                                  {PaneKind::residual, tr("R&esidual")},
                                                  {PaneKind::spectra, tr("&Spectra")},
                                                  {PaneKind::choice, tr("&Choice of strength")}};
    for (const auto& [kind, text] : kinds) {
        QAction* const action = menu.addAction(text);
        action->setCheckable(true);
        action->setChecked(true);
        connect(action, &QAction::toggled, this, [this, shown = kind](bool on) {
            if (on) {
                hidden.erase(shown);
            } else {
                hidden.insert(shown);
            }
            showFigure();
        });
    }
}
