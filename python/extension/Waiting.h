#pragma once

#include "workbench/jobs/JobObserver.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

// A call of Python that waits for work to end: others may hold the interpreter meanwhile, and
// Ctrl-C ends it. Python looks at signals on its main thread alone, and only if that asks; so
// either the thread of the call works and asks now and then, or another works and the call does
// nothing but ask.
class Waiting final : public JobObserver {
public:
    // Does the work without the lock of the interpreter, in the thread of the call.
    // pybind11::error_already_set where a signal raised an exception, which what the work threw
    // gives way to.
    void here(const std::function<void()>& work);
    // The same for work in several threads: in a thread of its own.
    void apart(const std::function<void()>& work);

    bool advances(const JobProgress& progress) override;

private:
    using Clock = std::chrono::steady_clock;

    void ask();

    const std::thread::id caller = std::this_thread::get_id();
    void* state = nullptr;  // of the thread in Python, while the lock is not held
    bool works = false;     // the caller itself
    Clock::time_point asked = Clock::now();
    std::atomic<bool> stop = false;
};
