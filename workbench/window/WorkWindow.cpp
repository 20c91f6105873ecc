#include "workbench/window/WorkWindow.h"

#include "workbench/messages/Failure.h"
#include "workbench/window/ComparisonTab.h"
#include "workbench/window/WorkPlot.h"

#include <QAction>
#include <QCloseEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QTabWidget>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <utility>

// A person types, and turns, in less than that between two changes.
static constexpr int settlingMilliseconds = 150;

WorkWindow::WorkWindow(FoldBench& ownBench, Desktop& moduleDesktop, const WindowOrder& order)
    : bench(ownBench), desktop(moduleDesktop), paintsOnly(!order.picture.empty()) {
    setWindowTitle("Fendra");
    addCentre();
    addStatus();
    addFileMenu();
    addRunMenu();
    addViewMenu();
    runner = std::make_unique<WorkRunner>(bench, hearing());
    settling.setSingleShot(true);
    settling.setInterval(settlingMilliseconds);
    connect(&settling, &QTimer::timeout, this, [this] { restart(); });
    painting.setSingleShot(true);
    connect(&painting, &QTimer::timeout, this, [this] { paintPicture(); });
    WorkState state = controls->state();
    state.signal = order.signal;
    state.kernel = order.kernel;
    controls->setState(state);
    showIdle();
    picture = QString::fromStdString(order.picture);
    settling.start(0);
    settling.setInterval(settlingMilliseconds);
}

WorkWindow::~WorkWindow() {
    runner.reset();  // before what hears it
}

WorkRunner::Heard WorkWindow::hearing() {
    return {[this](const JobProgress& progress) { showProgress(progress); },
            [this](const std::vector<double>& samples) { showEstimate(samples); },
            [this](const FoldBench::Words& words, const WorkRunner::AnswerMade& made) {
                showAnswer(words, made);
            },
            [this](const WorkRunner::ComparisonMade& made) {
                comparison->show(*made);
                showIdle();
            },
            [this](const QString& text) {
                showMessage(text);
                showIdle();
            }};
}

void WorkWindow::attempt(const std::function<void()>& action) {
    QString reason;
    try {
        action();
        return;
    } catch (const std::bad_alloc&) {
        reason = tr("There is not enough memory.");
    } catch (const std::exception& failure) {
        reason = QString::fromStdString(failure.what());
    }
    QMessageBox box(QMessageBox::Warning, windowTitle(), reason, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

// Runs what is set; with one file, or none, there is only something to look at.
void WorkWindow::restart() {
    settling.stop();
    showCommandLine();
    const WorkState state = controls->state();
    message->hide();
    if (state.signal.empty() || state.kernel.empty()) {
        runner->drop();
        answer.reset();
        look();
        showIdle();
        return;
    }
    runner->start(state.words());
    showIdle();
}

void WorkWindow::look() {
    const WorkState state = controls->state();
    if (state.signal.empty() && state.kernel.empty()) {
        paintIfDone();
        return;
    }
    try {
        figure = bench.look(state.words()).figure;
        summary->clear();
        showFigure();
    } catch (const std::exception& failure) {
        showMessage(QString::fromStdString(failure.what()));
    }
}

Figure WorkWindow::visibleFigure() const {
    Figure visible = figure;
    std::erase_if(visible.panes, [this](const Pane& pane) { return hidden.contains(pane.kind); });
    return visible;
}

void WorkWindow::showFigure() {
    plot->show(visibleFigure());
}

void WorkWindow::showAnswer(const FoldBench::Words& words, const WorkRunner::AnswerMade& made) {
    answer = made;
    answerWords = words;
    showsKept = false;
    figure = made->figure;
    showFigure();
    controls->showFound(made->outcome.record);
    showCommandLine();
    summary->setPlainText(
        QString::fromStdString(made->outcome.record.summary()) +
        tr("SHA-256 of the samples: %1").arg(QString::fromStdString(made->outcome.record.digest)));
    if (!paintsOnly) {
        remember();
    }
    showIdle();
}

// In the place of the result; the signals are those that are shown.
void WorkWindow::showEstimate(const std::vector<double>& samples) {
    Figure preview = visibleFigure();
    for (Pane& pane : preview.panes) {
        if (pane.kind != PaneKind::samples || pane.graphs.empty()) {
            continue;
        }
        Graph estimate = pane.graphs.front();
        for (const Graph& graph : pane.graphs) {
            if (graph.role == GraphRole::result) {
                estimate = graph;
            }
        }
        estimate.name = tr("estimate so far").toStdString();
        estimate.role = GraphRole::result;
        estimate.values = std::make_shared<const Pyramid>(samples);
        estimate.lower.reset();
        estimate.upper.reset();
        std::erase_if(pane.graphs,
                      [](const Graph& graph) { return graph.role == GraphRole::result; });
        pane.graphs.push_back(std::move(estimate));
    }
    plot->show(preview);
}

void WorkWindow::showProgress(const JobProgress& progress) {
    constexpr double whole = 1000.0;
    progressBar->setValue(static_cast<int>(progress.share * whole));
    progressBar->setFormat(progress.most > 0
                               ? tr("step %1 of at most %2").arg(progress.loop).arg(progress.most)
                               : "%p %");
}

// What can be done now.
void WorkWindow::showIdle() {
    const bool busy = runner != nullptr && runner->isBusy();
    progressBar->setVisible(busy);
    stopButton->setEnabled(busy);
    progressBar->setValue(0);
    flipAction->setEnabled(kept != nullptr && answer != nullptr);
    paintIfDone();
}

void WorkWindow::showMessage(const QString& text) {
    message->setText(text);
    message->setAccessibleName(text);
    message->show();
}

// Of an iteration that was stopped, the one that ends there by itself.
void WorkWindow::showCommandLine() {
    const WorkState state = controls->state();
    const FoldBench::Words words = state.words();
    std::string line;
    if (answer != nullptr && words == answerWords && answer->outcome.record.stop) {
        line = answer->outcome.record.stop->rerun;
    } else if (!state.signal.empty() && !state.kernel.empty()) {
        line = bench.commandLine(words);
    }
    commandLine->setText(QString::fromStdString(line));
    commandLine->setCursorPosition(0);
}

void WorkWindow::open(const QString& file, bool asKernel) {
    WorkState state = controls->state();
    (asKernel ? state.kernel : state.signal) = file.toStdString();
    controls->setState(state);
    restart();
}

// A click on the curve takes that count of steps, or that strength, by hand.
void WorkWindow::takeFromCurve(std::size_t sample) {
    if (answer == nullptr || !answer->outcome.record.choice ||
        sample >= answer->outcome.record.choice->curve.size()) {
        return;
    }
    const ChoiceRecord& choice = *answer->outcome.record.choice;
    const double parameter = choice.curve[sample].parameter;
    WorkState state = controls->state();
    state.take(answer->outcome.record.settings);
    if (choice.steps) {
        // The option counts the start as well.
        state.values["max-iterations"] = std::to_string(static_cast<long>(parameter) + 1);
    } else {
        state.values["strength"] = QString::number(parameter, 'g', 17).toStdString();
    }
    controls->setState(state);
    restart();
}

void WorkWindow::takeNoiseFrom(double from, double to) {
    noiseAction->setChecked(false);
    WorkState state = controls->state();
    state.values["noise-from"] =
        QString("%1:%2")
            .arg(QString::number(from, 'g', 6), QString::number(to, 'g', 6))
            .toStdString();
    controls->setState(state);
    restart();
}

void WorkWindow::compare() {
    const WorkState state = controls->state();
    if (state.signal.empty() || state.kernel.empty()) {
        showMessage(tr("A comparison takes a signal and a kernel: open both."));
        return;
    }
    message->hide();
    tabs->setCurrentWidget(comparison);
    runner->start(state.comparisonWords());
    showIdle();
}

void WorkWindow::keep() {
    kept = answer;
    showIdle();
}

// Between the result that is kept, A, and the latest, B: the view stays where it is.
void WorkWindow::flip() {
    if (kept == nullptr || answer == nullptr) {
        return;
    }
    showsKept = !showsKept;
    figure = (showsKept ? kept : answer)->figure;
    showFigure();
    readout->setText(showsKept ? tr("A: the result that is kept") : tr("B: the latest result"));
}

FendraSettings WorkWindow::settingsNow() const {
    return answer != nullptr ? answer->outcome.record.settings : controls->state().settings();
}

void WorkWindow::editModule() {
    attempt([this] {
        if (const auto edited = bench.editSettings(settingsNow(), desktop)) {
            WorkState state = controls->state();
            state.take(*edited);
            controls->setState(state);
            restart();
        }
    });
}

void WorkWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

// Two files are signal and kernel; one is what is still missing, and else the signal.
void WorkWindow::dropEvent(QDropEvent* event) {
    QStringList files;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            files.push_back(url.toLocalFile());
        }
    }
    WorkState state = controls->state();
    if (files.size() >= 2) {
        state.signal = files[0].toStdString();
        state.kernel = files[1].toStdString();
    } else if (files.size() == 1) {
        const bool missesKernel = !state.signal.empty() && state.kernel.empty();
        (missesKernel ? state.kernel : state.signal) = files[0].toStdString();
    }
    event->acceptProposedAction();
    controls->setState(state);
    restart();
}

void WorkWindow::closeEvent(QCloseEvent* event) {
    runner->drop();
    event->accept();
    QCoreApplication::exit(0);
}

void WorkWindow::paintIfDone() {
    if (!picture.isEmpty() && runner != nullptr && !runner->isBusy() && !settling.isActive()) {
        painting.start(0);
    }
}

void WorkWindow::paintPicture() {
    QSaveFile target(picture);
    const bool done =
        target.open(QIODevice::WriteOnly) && grab().save(&target, "PNG") && target.commit();
    if (!done) {
        std::fprintf(stderr, "fendra: %s: the picture cannot be written (%s); name another file\n",
                     picture.toUtf8().constData(), target.errorString().toUtf8().constData());
    }
    QCoreApplication::exit(done ? 0 : 1);
}
