#pragma once

#include <cstddef>

namespace kernels {

// The data caches that a core of this processor reaches, in bytes. What the processor does not tell
// is taken for what nearly all have at least: 32 kB, 256 kB and, where there is no third, as much
// as the second.
struct Caches {
    std::size_t firstLevel, secondLevel, thirdLevel;
};

// Asked for once.
const Caches& caches();

}  // namespace kernels
