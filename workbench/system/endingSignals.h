#pragma once

#include <vector>

// The signals by which the system, or somebody at the terminal, ends the process, without those
// that it ignores. From then on, writing beyond a limit on the size of files is an error of that
// write.
std::vector<int> endingSignals();
