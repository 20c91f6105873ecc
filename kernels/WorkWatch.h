#pragma once

#include <functional>
#include <limits>

namespace kernels {

// Leaves work that is stopped. What it was computing is half done.
struct Stopped {};

// Watches the long work that is done in its thread while it lives; of several, the last one alone
// does. Work asks between pieces of some milliseconds whether to go on. Work that is shorter does
// not ask, and no bit of a result depends on it.
class WorkWatch {
public:
    // With the share of the work that is done, from 0 to 1, as far as that is known. false stops
    // the work, and so does whatever is thrown.
    using Question = std::function<bool(double share)>;

    // The question stays the caller's.
    explicit WorkWatch(const Question& goesOn);
    WorkWatch(const WorkWatch&) = delete;
    WorkWatch& operator=(const WorkWatch&) = delete;
    ~WorkWatch();

    // Asks the one of this thread, if there is one. Throws Stopped.
    static void ask(double share);

    // Work that was done without asking, in multiply-adds; asks once it has added up to a piece.
    static void passed(double work);

    // A piece of work in multiply-adds, and what an element on its way through the caches counts.
    static constexpr double piece = 1 << 25, element = 32.0;

private:
    friend class WorkPart;

    const Question& question;
    WorkWatch* const before;
    double from = 0.0, width = 1.0;  // of the part under way
    double waiting = 0.0;            // work since the last question
};

// While it lives, the work of its thread is a part of what is watched, from one share to another.
// Parts may have parts.
class WorkPart {
public:
    WorkPart(double from, double to);
    WorkPart(const WorkPart&) = delete;
    WorkPart& operator=(const WorkPart&) = delete;
    ~WorkPart();

private:
    WorkWatch* const watch;
    double fromBefore = 0.0, widthBefore = 1.0;
};

// Counts the work of a kernel, in multiply-adds or in what takes as long, and asks after each piece
// of it.
class WorkCount {
public:
    static constexpr double unknown = std::numeric_limits<double>::infinity();

    // all: unknown, where the share is not looked at.
    explicit WorkCount(double allWork) : all(allWork) {}

    void add(double work) {
        done += work;
        if (done >= due) {
            due = done + WorkWatch::piece;
            WorkWatch::ask(done / all);
        }
    }

private:
    const double all;
    double done = 0.0, due = WorkWatch::piece;
};

}  // namespace kernels
