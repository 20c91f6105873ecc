#pragma once

#include "kernels/Block.h"
#include "kernels/InstructionSet.h"
#include "kernels/arithmetic.h"

#include <cstddef>
#include <memory>

namespace kernels {

// Room that products copy their operands to. One serves any number of them, one after the other,
// and grows with the larger ones.
class ProductRoom {
public:
    // At least `count` doubles, from the start of a cache line on. Null: no memory.
    double* of(std::size_t count);

private:
    std::unique_ptr<double[]> block;
    std::size_t size = 0;
};

// Products of matrices, (rows x depth)(depth x cols). Each element takes its products one at a time
// in ascending k:
//     multiply           c[i][j] = 0 + a[i][0] b[0][j] + a[i][1] b[1][j] + ...
//     subtractProduct    c[i][j] = c[i][j] - a[i][0] b[0][j] - a[i][1] b[1][j] - ...
// c lies apart from a and b. Where there is no memory for copies, they take longer.
void multiply(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
              Block<double> c);
void subtractProduct(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
                     Block<double> c, ProductRoom& room);

// The instruction set that a product of so many multiply-adds runs on.
InstructionSet productForm(double multiplyAdds);

namespace plain {
template <typename T>
void multiply(Block<const T> a, Block<const T> b, int rows, int depth, int cols, Block<T> c) {
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < cols; ++j) {
            T element = 0;
            for (int k = 0; k < depth; ++k) {
                element = sum(element, product(a.row(i)[k], b.row(k)[j]));
            }
            c.row(i)[j] = element;
        }
    }
}

template <typename T>
void subtractProduct(Block<const T> a, Block<const T> b, int rows, int depth, int cols,
                     Block<T> c) {
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < cols; ++j) {
            T element = c.row(i)[j];
            for (int k = 0; k < depth; ++k) {
                element = difference(element, product(a.row(i)[k], b.row(k)[j]));
            }
            c.row(i)[j] = element;
        }
    }
}
}  // namespace plain

inline void multiply(Block<const int> a, Block<const int> b, int rows, int depth, int cols,
                     Block<int> c) {
    plain::multiply(a, b, rows, depth, cols, c);
}

}  // namespace kernels
