#include "workbench/system/inParallel.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

int coreCount() {
    return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

namespace {

// Tasks that wait, and the first fault among those that ran.
class Queue {
public:
    Queue(std::int64_t tasks, const std::function<void(std::int64_t)>& run)
        : count(tasks), task(run) {}

    void work() {
        std::int64_t index = 0;
        while (take(index)) {
            try {
                task(index);
            } catch (...) {
                fail(index, std::current_exception());
            }
        }
    }

    void rethrow() const {
        if (fault) {
            std::rethrow_exception(fault);
        }
    }

private:
    bool take(std::int64_t& index) {
        const std::lock_guard<std::mutex> lock(mutex);
        index = next;
        next += fault ? 0 : 1;
        return !fault && index < count;
    }

    void fail(std::int64_t index, std::exception_ptr thrown) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!fault || index < faultyIndex) {
            faultyIndex = index;
            fault = std::move(thrown);
        }
    }

    const std::int64_t count;
    const std::function<void(std::int64_t)>& task;
    std::mutex mutex;
    std::int64_t next = 0, faultyIndex = 0;
    std::exception_ptr fault;
};

}  // namespace

// Where the system has no thread left, those that there are do all.
void inParallel(int threads, std::int64_t count, const std::function<void(std::int64_t)>& task) {
    Queue queue(count, task);
    const std::int64_t more = std::min<std::int64_t>(threads, count) - 1;
    std::vector<std::thread> helpers;
    helpers.reserve(static_cast<std::size_t>(std::max<std::int64_t>(more, 0)));
    try {
        for (std::int64_t i = 0; i < more; ++i) {
            helpers.emplace_back([&queue] { queue.work(); });
        }
    } catch (const std::system_error&) {
    }
    queue.work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    queue.rethrow();
}
