#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <vector>

// Work in rounds: a round is begun, its parts are run, and it is ended.
struct RoundWork {
    std::function<void(std::int64_t round)> begin;
    std::function<void(std::int64_t round, int part)> run;
    std::function<void(std::int64_t round)> end;
};

// Does so many rounds of so many parts in up to so many threads, of which the caller's is one.
// Parts are begun in their order, and run side by side. Rounds are begun in their order, one at a
// time, and ended likewise, while parts of others run. A round is begun after the end of the one
// that stands as many before it as there are threads, and may take the place of its data.
//
// What is thrown comes out where it would in one thread: the rounds before are ended, and of what
// the parts of a round throw, that of the lowest part counts. Parts that run by then are waited
// for, and no others are begun.
void inRounds(int threads, std::int64_t rounds, int parts, const RoundWork& work);

// The data of the rounds under way.
template <typename Data>
class RoundData {
public:
    explicit RoundData(int threads) : places(static_cast<std::size_t>(threads)) {}

    Data& operator[](std::int64_t round) {
        return places[static_cast<std::size_t>(round % std::ssize(places))];
    }

private:
    std::vector<Data> places;
};
