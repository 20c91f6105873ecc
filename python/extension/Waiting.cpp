#include "python/extension/Waiting.h"

#include <pybind11/pybind11.h>

#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>

using namespace std::chrono_literals;
static constexpr std::chrono::milliseconds patience = 20ms;

// With the lock for a moment. An exception that a signal raised stays set in this thread.
void Waiting::ask() {
    PyEval_RestoreThread(static_cast<PyThreadState*>(state));
    stop = stop || PyErr_CheckSignals() != 0;
    state = PyEval_SaveThread();
    asked = Clock::now();
}

bool Waiting::advances(const JobProgress& /*progress*/) {
    if (!stop && works && std::this_thread::get_id() == caller && Clock::now() - asked > patience) {
        ask();
    }
    return !stop;
}

static std::exception_ptr thrownBy(const std::function<void()>& work) {
    try {
        work();
        return nullptr;
    } catch (...) {
        return std::current_exception();
    }
}

void Waiting::here(const std::function<void()>& work) {
    works = true;
    state = PyEval_SaveThread();
    const std::exception_ptr thrown = thrownBy(work);
    PyEval_RestoreThread(static_cast<PyThreadState*>(state));
    if (stop) {
        throw pybind11::error_already_set();
    }
    if (thrown) {
        std::rethrow_exception(thrown);
    }
}

void Waiting::apart(const std::function<void()>& work) {
    std::mutex guard;
    std::condition_variable ended;
    bool done = false;
    std::exception_ptr thrown;
    std::thread worker;
    try {
        worker = std::thread([&] {
            thrown = thrownBy(work);
            const std::lock_guard lock(guard);
            done = true;
            ended.notify_one();
        });
    } catch (const std::system_error&) {  // there is no thread left
        here(work);
        return;
    }
    here([&] {
        works = false;  // it asks here, between waits
        std::unique_lock lock(guard);
        while (!ended.wait_for(lock, patience, [&] { return done; })) {
            lock.unlock();
            if (!stop) {
                ask();
            }
            lock.lock();
        }
        lock.unlock();
        worker.join();
        if (thrown) {
            std::rethrow_exception(thrown);
        }
    });
}
