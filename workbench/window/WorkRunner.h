#pragma once

#include "workbench/desktop/FoldBench.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

// Runs what the window wants in a thread of its own, one after the other. What has been asked for
// anew makes the run before it pointless: it is stopped, and nothing of it is heard any more. All
// is heard in the window's thread.
class WorkRunner : public QObject {
public:
    using AnswerMade = std::shared_ptr<const FoldBench::Answer>;
    using ComparisonMade = std::shared_ptr<const FoldBench::Compared>;
    struct Heard {
        std::function<void(const JobProgress&)> advanced;
        // Of the first channel.
        std::function<void(const std::vector<double>&)> estimated;
        // Each run ends with one of these.
        std::function<void(const FoldBench::Words&, const AnswerMade&)> ended;
        std::function<void(const ComparisonMade&)> compared;
        std::function<void(const QString&)> failed;  // one line
    };

    WorkRunner(FoldBench& ofWindow, Heard whoHears);
    WorkRunner(const WorkRunner&) = delete;
    WorkRunner& operator=(const WorkRunner&) = delete;
    ~WorkRunner() override;  // stops, and waits

    // By the words: convolve, deconvolve or compare.
    void start(const FoldBench::Words& words);
    // A person wants the run to end. An iteration ends with the estimate so far.
    void stop();
    // The run under way, if any, is not wanted any more.
    void drop();

    [[nodiscard]] bool isBusy() const { return busy; }

protected:
    void customEvent(QEvent* event) override;

private:
    class Watch;
    struct Task {
        FoldBench::Words words;
        std::shared_ptr<Watch> watch;
    };

    void work();
    void perform(const Task& task);
    // In the window's thread, unless the run is not wanted any more.
    void post(const std::shared_ptr<Watch>& watch, std::function<void()> action);
    void finish(const std::shared_ptr<Watch>& watch, std::function<void()> action);

    FoldBench& bench;
    const Heard heard;
    bool busy = false;               // of the window's thread
    std::shared_ptr<Watch> current;  // likewise
    std::mutex guard;                // of what follows
    std::condition_variable arrived;
    std::optional<Task> next;
    bool ending = false;
    std::thread worker;
};
