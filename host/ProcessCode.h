#pragma once

// What Process answers. The codes are the module's interface: a failure's reason travels beside
// them, see RunObserver.
struct ProcessCode {
    static constexpr int done = 0;
    static constexpr int failed = -1;         // refused, or memory exhausted
    static constexpr int lengthsDiffer = -5;  // the method asks for signals of equal length
};
