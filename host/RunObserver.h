#pragma once

#include <cstdint>

// A step of an iterative run whose estimate is kept.
struct RunStep {
    std::uint32_t loop;  // loop count after the step
    std::uint32_t most;  // bound on the loop count
    double error;        // of the estimate
};

// Why a run has no result.
enum class RunFailure {
    memoryExhausted,
    refused  // the method has no answer for these signals, or there is no such method
};

// Watches the runs that modules make in one thread, and may stop them. Modules call it within
// Process, in the thread that called Process and in the standard arithmetic, whatever the host's.
// What an observer throws goes no further.
class RunObserver {
public:
    virtual ~RunObserver() = default;

    // Called after each step that is kept, the last one included. false ends the run with the
    // estimate of that step, as an ordinary success.
    virtual bool afterStep(const RunStep& step) = 0;

    // Called once for each pass without a result, before Process returns. It is the only way to
    // tell exhausted memory from a refusal, since both are ProcessCode::failed, and to learn why a
    // result is all NaN where Process answers ProcessCode::done.
    virtual void afterFailure(RunFailure why) = 0;

    // Makes observer that of the calling thread, null for none, the default. The caller keeps it
    // and uninstalls it before it ends. Returns the one before. Each thread has its own, so jobs
    // in several threads watch each their own run.
    static RunObserver* install(RunObserver* observer);

    // That of the calling thread; null: none.
    static RunObserver* current();

    // For modules: passes a failure on to the observer of the calling thread, if there is one.
    static void reportFailure(RunFailure why) noexcept;
};
