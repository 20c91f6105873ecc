#pragma once

#include <cstdint>

// A step of an iterative run whose estimate is kept.
struct RunStep {
    std::uint32_t loop;      // loop count after the step
    std::uint32_t most;      // bound on the loop count
    double error;            // of the estimate
    const double* estimate;  // there during the call
    int length;              // of the estimate
};

// How far a run has come.
struct RunPart {
    double share;        // of the step that is under way, or of a run without steps, from 0 to 1
    std::uint32_t loop;  // loop count before the step, 1 before the first; 0: there are no steps
    std::uint32_t most;  // bound on the loop count; 0: likewise
};

// Why a run has no result.
enum class RunFailure {
    memoryExhausted,
    refused,  // the method has no answer for these signals, or there is no such method
    stopped   // by within, before there was an estimate
};

// Watches the runs that modules make in one thread, and may stop them. Modules call it within
// Process, in the thread that called Process and in the standard arithmetic, whatever the host's.
// What an observer throws goes no further; in place of an answer it stops the run. The virtual
// operations keep their order: append only.
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

    // Called every few milliseconds within a step or a run without steps; short ones may end
    // without a call. false ends the run: with the estimate of the last step that was kept, as an
    // ordinary success, or where there is none, with ProcessCode::failed and what waits on the
    // inputs left there.
    virtual bool within(const RunPart& /*part*/) { return true; }

    // Makes observer that of the calling thread, null for none, the default. The caller keeps it
    // and uninstalls it before it ends. Returns the one before. Each thread has its own, so jobs
    // in several threads watch each their own run.
    static RunObserver* install(RunObserver* observer);

    // That of the calling thread; null: none.
    static RunObserver* current();

    // For modules: passes a failure on to the observer of the calling thread, if there is one.
    static void reportFailure(RunFailure why) noexcept;
};
