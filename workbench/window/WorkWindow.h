#pragma once

#include "workbench/desktop/windowExports.h"
#include "workbench/window/WorkControls.h"
#include "workbench/window/WorkRunner.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

class ComparisonTab;
class Desktop;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTabWidget;
class WorkPlot;

// The window in which one works: what is set on the left, what there is to be seen of it on the
// right. Whatever changes is run anew, off the window's thread.
class WorkWindow : public QMainWindow {
    Q_DECLARE_TR_FUNCTIONS(WorkWindow)

public:
    // The bench, and the desktop for the module's own dialog, outlive the window.
    WorkWindow(FoldBench& ownBench, Desktop& moduleDesktop, const WindowOrder& order);
    WorkWindow(const WorkWindow&) = delete;
    WorkWindow& operator=(const WorkWindow&) = delete;
    ~WorkWindow() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void addCentre();
    void addStatus();
    void addFileMenu();
    void addRunMenu();
    void addViewMenu();
    void addRecent();
    QAction* addAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                       std::function<void()> action);
    [[nodiscard]] WorkRunner::Heard hearing();

    void openSignal();
    void openKernel();
    void open(const QString& file, bool asKernel);
    void remember();
    void restart();
    void look();
    [[nodiscard]] Figure visibleFigure() const;
    void showFigure();
    void showAnswer(const FoldBench::Words& words, const WorkRunner::AnswerMade& made);
    void showEstimate(const std::vector<double>& samples);
    void showProgress(const JobProgress& progress);
    void showIdle();
    void showMessage(const QString& text);
    void showCommandLine();
    void takeFromCurve(std::size_t sample);
    void takeNoiseFrom(double from, double to);
    void compare();
    void flip();
    void keep();
    void saveResult();
    void savePicture();
    void writePicture(const QString& file);
    void saveGraph();
    void editModule();
    void paintIfDone();
    void paintPicture();
    // What fails is shown, and loses nothing.
    void attempt(const std::function<void()>& action);
    [[nodiscard]] FendraSettings settingsNow() const;

    FoldBench& bench;
    Desktop& desktop;
    WorkControls* controls = nullptr;
    WorkPlot* plot = nullptr;
    ComparisonTab* comparison = nullptr;
    QTabWidget* tabs = nullptr;
    QPlainTextEdit* summary = nullptr;
    QLabel *message = nullptr, *readout = nullptr;
    QProgressBar* progressBar = nullptr;
    QPushButton* stopButton = nullptr;
    QLineEdit* commandLine = nullptr;
    QMenu* recent = nullptr;
    QAction *flipAction = nullptr, *noiseAction = nullptr;

    QTimer settling;  // until a person has done with a change
    QTimer painting;  // until what the last change has brought about is through
    Figure figure;    // that is shown, with all its panes
    std::set<PaneKind> hidden;
    FoldBench::Words answerWords;
    WorkRunner::AnswerMade answer, kept;
    bool showsKept = false;
    const bool paintsOnly;  // into a file, once nothing runs any more
    QString picture;
    std::unique_ptr<WorkRunner> runner;  // ends first
};
