#include "workbench/system/inRounds.h"

#include "workbench/system/inParallel.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <utility>

namespace {

// Rounds under way. All but the work itself is done under the lock.
class Rounds {
public:
    Rounds(int threads, std::int64_t roundsOfAll, int partsOfEach, const RoundWork& workOfAll)
        : rounds(roundsOfAll),
          parts(partsOfEach),
          work(workOfAll),
          most(threads),
          states(threads) {}

    // Takes part after part, as long as there is one: what one thread does.
    void join();

    void rethrow() const {
        if (fault) {
            std::rethrow_exception(fault);
        }
    }

private:
    using Lock = std::unique_lock<std::mutex>;

    struct State {
        int left = 0;              // parts that have not ended
        std::exception_ptr fault;  // of the lowest part that threw
        int faultyPart = 0;
    };

    [[nodiscard]] bool mayRun(std::int64_t round, int part) const;
    void begin(Lock& lock, std::int64_t round);
    void run(Lock& lock, std::int64_t round, int part);
    void endWhatIsDone(Lock& lock);

    const std::int64_t rounds;
    const int parts;
    const RoundWork& work;
    const int most;  // rounds under way
    std::mutex guard;
    std::condition_variable changed;
    RoundData<State> states;  // of the rounds that are begun and not ended
    std::int64_t taken = 0;   // parts of all rounds
    std::int64_t begun = 0, ended = 0;
    bool ending = false;       // a round is being ended
    std::exception_ptr fault;  // that ends the work
};

}  // namespace

// Calls without the lock, and gives what that throws.
template <typename Call>
static std::exception_ptr thrownBy(std::unique_lock<std::mutex>& lock, const Call& call) {
    std::exception_ptr thrown;
    lock.unlock();
    try {
        call();
    } catch (...) {
        thrown = std::current_exception();
    }
    lock.lock();
    return thrown;
}

// A thread waits only for parts that were taken before its own, so one of all can always go on.
void Rounds::join() {
    Lock lock(guard);
    while (!fault && taken < rounds * parts) {
        const std::int64_t round = taken / parts;
        const int part = static_cast<int>(taken % parts);
        ++taken;
        changed.wait(lock, [&] { return fault || mayRun(round, part); });
        if (fault) {
            return;
        }
        if (part == 0) {
            begin(lock, round);
        }
        run(lock, round, part);
        endWhatIsDone(lock);
    }
}

// The first part begins its round.
bool Rounds::mayRun(std::int64_t round, int part) const {
    return part == 0 ? begun == round && round < ended + most : begun > round;
}

void Rounds::begin(Lock& lock, std::int64_t round) {
    State& state = states[round];
    state = {parts, thrownBy(lock, [&] { work.begin(round); }), -1};
    ++begun;
    changed.notify_all();
}

// Where a lower part has thrown, nothing depends on this one.
void Rounds::run(Lock& lock, std::int64_t round, int part) {
    State& state = states[round];
    const auto isFirstFault = [&] { return !state.fault || part < state.faultyPart; };
    if (isFirstFault()) {
        std::exception_ptr thrown = thrownBy(lock, [&] { work.run(round, part); });
        if (thrown && isFirstFault()) {
            state.fault = std::move(thrown);
            state.faultyPart = part;
        }
    }
    --state.left;
}

void Rounds::endWhatIsDone(Lock& lock) {
    if (ending) {
        return;
    }
    ending = true;
    while (!fault && ended < begun && states[ended].left == 0) {
        fault = std::exchange(states[ended].fault, nullptr);
        if (!fault) {
            fault = thrownBy(lock, [&] { work.end(ended); });
        }
        ended += fault ? 0 : 1;
        changed.notify_all();
    }
    ending = false;
}

void inRounds(int threads, std::int64_t rounds, int parts, const RoundWork& work) {
    Rounds all(threads, rounds, parts, work);
    const int used = static_cast<int>(std::min<std::int64_t>(threads, rounds * parts));
    inParallel(used, used, [&](std::int64_t /*thread*/) { all.join(); });
    all.rethrow();
}
