#include "workbench/system/inRounds.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace {

// Rounds of three parts, each a number of its round: what each was given, and what its end has
// seen. Later parts are done sooner.
class Sums {
public:
    Sums(int threadCount, std::int64_t roundCount)
        : threads(threadCount), rounds(roundCount), under(threadCount) {}

    // fails: called at each place, and may throw.
    template <typename Fails>
    std::string run(const Fails& fails) {
        try {
            inRounds(threads, rounds, 3,
                     {[&](std::int64_t round) {
                          EXPECT_EQ(round, begun++);
                          EXPECT_LE(begun - ended, threads);
                          under[round] = {};
                          fails("begin", round, 0);
                      },
                      [&](std::int64_t round, int part) {
                          std::this_thread::sleep_for(std::chrono::microseconds(200 * (3 - part)));
                          fails("run", round, part);
                          under[round].at(static_cast<std::size_t>(part)) = 10 * round + part;
                      },
                      [&](std::int64_t round) {
                          fails("end", round, 0);
                          EXPECT_EQ(round, ended);
                          const std::array<std::int64_t, 3> all = {10 * round, 10 * round + 1,
                                                                   10 * round + 2};
                          EXPECT_EQ(under[round], all);
                          ++ended;
                      }});
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    }

    std::atomic<std::int64_t> begun = 0, ended = 0;

private:
    int threads;
    std::int64_t rounds;
    RoundData<std::array<std::int64_t, 3>> under;
};

}  // namespace

TEST(InRounds, BeginsAndEndsEachInOrderWithAsManyUnderWayAsThreads) {
    for (const int threads : {1, 2, 5}) {
        for (const int rounds : {0, 1, 2, 23}) {
            Sums sums(threads, rounds);
            EXPECT_EQ(sums.run([](const char*, std::int64_t, int) {}), "");
            EXPECT_EQ(sums.ended, rounds);
        }
    }
}

// Round 4 fails where it is said, and whatever stands later in the order fails too, sooner or not.
TEST(InRounds, ThrowsWhatOneThreadWouldHaveThrown) {
    for (const int threads : {1, 2, 5}) {
        for (const auto& [place, part] : {std::pair("begin", 0), {"run", 1}, {"end", 0}}) {
            const auto fails = [&, p = place, q = part](const std::string& where,
                                                        std::int64_t round, int index) {
                if (round > 4 || (round == 4 && where == p && index >= q)) {
                    throw std::runtime_error(where + " " + std::to_string(10 * round + index));
                }
            };
            Sums sums(threads, 12);
            EXPECT_EQ(sums.run(fails), std::string(place) + " " + std::to_string(40 + part));
            EXPECT_EQ(sums.ended, 4);
        }
    }
}
