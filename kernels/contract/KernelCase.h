#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace kernels {

// The contract of every kernel: on the same input its plain loop and its fast form give the same
// bits, on each instruction set. All NaNs count as equal.

enum class Form { plain, fast };

// Doubles for a kernel to work on, or to write to.
class Samples {
public:
    // length zeros, `offset` doubles after the start of a cache line.
    Samples(int length, int offset);

    double* data() { return block.data() + first; }
    [[nodiscard]] int size() const { return count; }

private:
    std::vector<double> block;
    std::size_t first;
    int count;
};

// An endless source of input: the given values over and over again.
class Input {
public:
    // Not empty. Samples taken lie `offset` doubles (0 to 7) after the start of a cache line.
    Input(std::span<const double> someValues, int offset) : values(someValues), at(offset) {}

    // The next count values.
    Samples take(int count);
    // Room for results, at the same offset.
    [[nodiscard]] Samples room(int count) const { return {count, at}; }

private:
    std::span<const double> values;
    int at;
    std::size_t next = 0;
};

struct KernelCase {
    std::string name;
    std::vector<int> sizes;  // at which the contract is tested
    // All results of the kernel for a size, one array after the other.
    std::vector<double> (*run)(Form form, int size, Input& input);
};

// All kernels.
const std::vector<KernelCase>& kernelCases();

// The first index at which the results differ, or -1.
std::ptrdiff_t firstDifference(std::span<const double> a, std::span<const double> b);

// Sizes 0 to 600, and some more.
std::vector<int> everySizeAnd(std::vector<int> edges);

// The cases of each family, each in a file of its own.
std::vector<KernelCase> decompositionCases();
std::vector<KernelCase> matrixCases();
std::vector<KernelCase> signalCases();
std::vector<KernelCase> hartleyCases();
std::vector<KernelCase> transformCases();

}  // namespace kernels
