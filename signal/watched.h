#pragma once

#include "kernels/WorkWatch.h"

#include <new>
#include <optional>
#include <stdexcept>

// The run of an algorithm object: does the work under the object's question whether to go on, if it
// has one, and turns what leaves it into the result. Without a question of its own the run is part
// of another one, which hears of the stop.
//   returns   1: done. 0: memory exhausted, or stopped by the question.
template <typename Work>
int watched(const kernels::WorkWatch::Question& goesOn, const Work& work) {
    try {
        std::optional<kernels::WorkWatch> watch;
        if (goesOn) {
            watch.emplace(goesOn);
        }
        work();
        return 1;
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {  // a size beyond what vectors hold
    } catch (const kernels::Stopped&) {
        if (!goesOn) {
            throw;
        }
    }
    return 0;
}
