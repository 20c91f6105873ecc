#pragma once

#include <cstdint>
#include <functional>

// Cores that this process may use, at least 1.
int coreCount();

// Runs task(0) to task(count - 1), each once, begun in this order, in up to so many threads, of
// which the caller's is one, and waits for all. Once a task has thrown, no other is begun; what the
// task of the lowest index threw is thrown at the end. Which thread runs which task is not laid
// down, so tasks share nothing that any of them writes.
void inParallel(int threads, std::int64_t count, const std::function<void(std::int64_t)>& task);
