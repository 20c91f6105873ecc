#include "kernels/contract/KernelCase.h"
#include "kernels/elimination.h"
#include "kernels/product.h"
#include "kernels/substitution.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace kernels {

static void append(std::vector<double>& results, Samples& samples) {
    results.insert(results.end(), samples.data(), samples.data() + samples.size());
}

// One dimension after the other is `size`, and the others are small, yet larger than a tile.
static std::vector<double> runProduct(Form form, int size, Input& input) {
    std::vector<double> results;
    const int small = 1 + size % 5;
    for (const auto& [rows, depth, cols] :
         {std::array{size, small, 11}, {small, size, 9}, {11, small, size}}) {
        Samples a = input.take(rows * depth), b = input.take(depth * cols);
        Samples c = input.take(rows * cols), d = input.take(rows * cols);
        const Block<const double> left{a.data(), depth}, right{b.data(), cols};
        const Block<double> sums{c.data(), cols}, differences{d.data(), cols};
        if (form == Form::fast) {
            ProductRoom room;
            multiply(left, right, rows, depth, cols, sums);
            subtractProduct(left, right, rows, depth, cols, differences, room);
        } else {
            plain::multiply(left, right, rows, depth, cols, sums);
            plain::subtractProduct(left, right, rows, depth, cols, differences);
        }
        append(results, c);
        append(results, d);
    }
    return results;
}

// A matrix as the input has it, and one of small integers with ties, zeros and rows that repeat.
static std::vector<Samples> matrices(int n, Input& input) {
    Samples general = input.take(n * n), ties = input.take(n * n);
    for (int e = 0; e < n * n; ++e) {
        double& element = ties.data()[e / n % 5 == 4 ? e - 2 * n : e];
        ties.data()[e] =
            std::isnan(element) ? 0.0 : std::round(std::clamp(2.0 * element, -2.0, 2.0));
    }
    return {general, ties};
}

static std::vector<double> runElimination(Form form, int size, Input& input) {
    std::vector<double> results;
    for (Samples& a : matrices(size, input)) {
        Samples inOrder = a, scales = input.room(size), panel = input.room(panelWidth * size);
        std::vector<int> pivots(static_cast<std::size_t>(size));
        if (form == Form::fast) {
            results.push_back(findScales(a.data(), size, scales.data()) ? 1.0 : 0.0);
            append(results, scales);
            eliminate(a.data(), size, scales.data(), pivots.data(), panel.data());
            eliminate(inOrder.data(), size);
        } else {
            results.push_back(plain::findScales(a.data(), size, scales.data()) ? 1.0 : 0.0);
            append(results, scales);
            plain::eliminate(a.data(), size, scales.data(), pivots.data());
            plain::eliminate(inOrder.data(), size);
        }
        append(results, a);
        append(results, inOrder);
        results.insert(results.end(), pivots.begin(), pivots.end());
    }
    return results;
}

// Right-hand sides of all kinds next to each other: full, with ever more zeros that lead, of either
// sign, and unit vectors.
static std::vector<double> solveColumns(Form form, int n, int count, Input& input) {
    Samples a = input.take(n * n), b = input.take(n * count);
    for (int j = 0; j < count; ++j) {
        const int zeros = j % 3 == 0 ? 0 : std::min(n, j % (n + 2));
        for (int i = 0; i < n; ++i) {
            double& element = b.data()[i * count + j];
            if (i < zeros) {
                element = std::copysign(0.0, element);
            } else if (j % 3 == 2) {
                element = i == zeros ? 1.0 : 0.0;
            }
        }
    }
    const Block<double> columns{b.data(), count};
    form == Form::fast ? substitute(a.data(), n, columns, count)
                       : plain::substitute<double>(a.data(), n, columns, count);
    return {b.data(), b.data() + b.size()};
}

static std::vector<double> runSubstitution(Form form, int size, Input& input) {
    std::vector<double> results = solveColumns(form, 1 + size % 13, size, input);
    const std::vector<double> higher = solveColumns(form, size % 61, size % 41, input);
    results.insert(results.end(), higher.begin(), higher.end());
    return results;
}

std::vector<KernelCase> matrixCases() {
    std::vector<int> orders(82);
    std::iota(orders.begin(), orders.end(), 0);
    orders.insert(orders.end(), {127, 128, 129, 150, 255, 256, 257, 300});
    return {{"product", everySizeAnd({}), runProduct},
            {"elimination", orders, runElimination},
            {"substitution", everySizeAnd({}), runSubstitution}};
}

}  // namespace kernels
