#include "workbench/window/WorkRunner.h"

#include <QCoreApplication>
#include <QEvent>

#include <chrono>
#include <new>
#include <utility>

using Clock = std::chrono::steady_clock;

namespace {

// Something to be done in the window's thread.
class Errand : public QEvent {
public:
    explicit Errand(std::function<void()> action) : QEvent(User), act(std::move(action)) {}

    const std::function<void()> act;
};

}  // namespace

// The observer of one run.
class WorkRunner::Watch : public JobObserver, public std::enable_shared_from_this<Watch> {
public:
    explicit Watch(WorkRunner& runner) : owner(runner) {}

    void stop() { stopped = true; }

    bool advances(const JobProgress& progress) override {
        constexpr auto betweenReports = std::chrono::milliseconds(50);
        if (const auto now = Clock::now(); now - lastReport >= betweenReports) {
            lastReport = now;
            owner.post(shared_from_this(), [this, progress] { owner.heard.advanced(progress); });
        }
        return !stopped;
    }

    bool wantsEstimate() override {
        constexpr auto betweenEstimates = std::chrono::milliseconds(150);
        return !stopped && Clock::now() - lastEstimate >= betweenEstimates;
    }

    void estimated(int channel, const std::vector<double>& samples) override {
        if (channel == 0) {
            lastEstimate = Clock::now();
            owner.post(shared_from_this(), [this, samples] { owner.heard.estimated(samples); });
        }
    }

private:
    WorkRunner& owner;
    std::atomic<bool> stopped = false;
    Clock::time_point lastReport = {}, lastEstimate = Clock::now();
};

WorkRunner::WorkRunner(FoldBench& ofWindow, Heard whoHears)
    : bench(ofWindow), heard(std::move(whoHears)), worker([this] { work(); }) {}

WorkRunner::~WorkRunner() {
    drop();
    {
        const std::lock_guard lock(guard);
        ending = true;
    }
    arrived.notify_one();
    worker.join();
}

void WorkRunner::start(const FoldBench::Words& words) {
    drop();
    current = std::make_shared<Watch>(*this);
    busy = true;
    {
        const std::lock_guard lock(guard);
        next = Task{words, current};
    }
    arrived.notify_one();
}

void WorkRunner::stop() {
    if (current != nullptr) {
        current->stop();
    }
}

void WorkRunner::drop() {
    stop();
    current.reset();
    busy = false;
    const std::lock_guard lock(guard);
    next.reset();
}

void WorkRunner::work() {
    std::unique_lock lock(guard);
    for (;;) {
        arrived.wait(lock, [this] { return ending || next; });
        if (ending) {
            return;
        }
        const Task task = *std::exchange(next, std::nullopt);
        lock.unlock();
        perform(task);
        lock.lock();
    }
}

void WorkRunner::post(const std::shared_ptr<Watch>& watch, std::function<void()> action) {
    QCoreApplication::postEvent(this, new Errand([this, watch, act = std::move(action)] {
                                    if (watch == current) {
                                        act();
                                    }
                                }));
}

void WorkRunner::customEvent(QEvent* event) {
    dynamic_cast<const Errand&>(*event).act();
}

void WorkRunner::finish(const std::shared_ptr<Watch>& watch, std::function<void()> action) {
    post(watch, [this, act = std::move(action)] {
        busy = false;
        current.reset();
        act();
    });
}

// No exception may pass through a thread.
void WorkRunner::perform(const Task& task) {
    std::string failure;
    try {
        if (task.words.front() == "compare") {
            const ComparisonMade made =
                std::make_shared<const FoldBench::Compared>(bench.compare(task.words, *task.watch));
            finish(task.watch, [this, made] { heard.compared(made); });
        } else {
            const AnswerMade made =
                std::make_shared<const FoldBench::Answer>(bench.run(task.words, *task.watch));
            finish(task.watch, [this, made, words = task.words] { heard.ended(words, made); });
        }
        return;
    } catch (const std::bad_alloc&) {
        failure = "there is not enough memory for this run";
    } catch (const std::exception& reason) {
        failure = reason.what();
    }
    finish(task.watch, [this, text = QString::fromStdString(failure)] { heard.failed(text); });
}
