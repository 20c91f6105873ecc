#pragma once

#include <cstddef>

// The bytes that have been asked of operator new, in any of its forms, since the program started.
std::size_t allocatedBytes();
