#include "kernels/product.h"

#include "kernels/Caches.h"
#include "kernels/MeasuredForm.h"
#include "kernels/WorkWatch.h"
#include "kernels/productTile.h"

#include <algorithm>
#include <cstdint>
#include <new>

namespace kernels {

// The order of the loops is that of K. Goto and R. A. van de Geijn, "Anatomy of high-performance
// matrix multiplication", ACM Trans. Math. Softw. 34 (2008) 12. A block of terms of b is copied,
// strip by strip of a tile's width, and so is a block of rows of a, whose copy stays in the second
// cache while all strips pass. A strip stays in the first cache while the rows pass. Between blocks
// of terms the sums wait in c, and so every element takes its terms in ascending order.

double* ProductRoom::of(std::size_t count) {
    constexpr std::size_t line = 64, lineDoubles = line / sizeof(double);
    if (count + lineDoubles > size) {
        block.reset();
        block.reset(new (std::nothrow) double[count + lineDoubles]);
        size = block == nullptr ? 0 : count + lineDoubles;
    }
    void* start = block.get();
    std::size_t space = size * sizeof(double);
    return static_cast<double*>(std::align(line, count * sizeof(double), start, space));
}

static int roundedDown(std::size_t number, int unit) {
    constexpr std::size_t most = 1 << 20;
    return std::max(static_cast<int>(std::min(number, most)) / unit * unit, unit);
}

namespace {

// How many terms, rows and columns are copied at a time.
struct BlockSizes {
    int depth, rows, cols;
};

}  // namespace

// A strip and the rows of a tile nearly fill the first cache, but not with fewer terms than make up
// for the way of the sums from c and back. The rows take half of the second cache, all strips half
// of the third.
static constexpr int leastDepth = 192;
template <int lanes>
static BlockSizes blockSizes() {
    constexpr int rows = tileRows<lanes>, width = tileWidth<lanes>;
    constexpr std::size_t term = (rows + width) * sizeof(double);
    const int depth = std::max(leastDepth, roundedDown(caches().firstLevel * 7 / 8 / term, 8));
    const std::size_t column = static_cast<std::size_t>(depth) * sizeof(double);
    return {depth, roundedDown(caches().secondLevel / 2 / column, rows),
            roundedDown(caches().thirdLevel / 2 / column, width)};
}

// All rows of a, where they are, and a strip.
template <int lanes, Sign sign, int vectors, int rows = tileRows<lanes>>
[[gnu::always_inline]] static inline void addRowsInPlace(Block<const double> a, const double* strip,
                                                         int count, int depth, int cols,
                                                         Block<double> c) {
    int i = 0;
    for (; i + rows <= count; i += rows) {
        addTile<lanes, sign, rows, vectors>(RowsInPlace{a.from(i, 0)}, strip, depth, rows, cols,
                                            c.from(i, 0));
    }
    if constexpr (rows > 1) {
        constexpr int fewer = rows == 6 ? 4 : rows / 2;
        addRowsInPlace<lanes, sign, vectors, fewer>(a.from(i, 0), strip, count - i, depth, cols,
                                                    c.from(i, 0));
    }
}

// All columns, `vectors` vectors at a time and then fewer, with the rows of a where they are.
// Copied are strips alone, to the stack.
template <int lanes, Sign sign, int vectors = tileVectors<lanes>>
[[gnu::always_inline]] static inline void addStripsInPlace(Block<const double> a,
                                                           Block<const double> b, int rows,
                                                           int depth, int cols, Block<double> c) {
    constexpr int width = vectors * lanes, least = (vectors - 1) * lanes;
    alignas(64) double strip[std::size_t{leastDepth} * width];
    for (; cols > least; cols -= width, b = b.from(0, width), c = c.from(0, width)) {
        copyStrip<lanes, vectors>(b, depth, cols, strip);
        addRowsInPlace<lanes, sign, vectors>(a, strip, rows, depth, cols, c);
    }
    if constexpr (vectors > 1) {
        addStripsInPlace<lanes, sign, vectors - 1>(a, b, rows, depth, cols, c);
    }
}

template <int lanes, Sign sign>
[[gnu::always_inline]] static inline void addBlocksInPlace(Block<const double> a,
                                                           Block<const double> b, int rows,
                                                           int depth, int cols, Block<double> c) {
    WorkCount work(static_cast<double>(rows) * depth * cols);
    for (int k = 0; k < depth; k += leastDepth) {
        const int terms = std::min(leastDepth, depth - k);
        addStripsInPlace<lanes, sign>(a.from(0, k), b.from(k, 0), rows, terms, cols, c);
        work.add(static_cast<double>(rows) * terms * cols);
    }
}

// Copied rows and a copied strip. While a tile is at work, the next one is fetched, and a part of
// the next strip.
template <int lanes, Sign sign, int vectors>
[[gnu::always_inline]] static inline void addCopiedRows(const double* copiedRows,
                                                        const double* strip, int rows, int depth,
                                                        int cols, Block<double> c) {
    constexpr int height = tileRows<lanes>, line = 8;
    constexpr int width = vectors * lanes;
    const std::ptrdiff_t tileSize = std::ptrdiff_t{depth} * height;
    const std::ptrdiff_t stripSize = std::ptrdiff_t{depth} * width;
    const std::ptrdiff_t share = stripSize * height / rows + line;
    const double* fetched = strip + stripSize;
    for (int i = 0; i < rows; i += height, copiedRows += tileSize, fetched += share) {
        for (int next = i + height; next < std::min(i + 2 * height, rows); ++next) {
            for (int j = 0; j < width; j += line) {
                __builtin_prefetch(c.row(next) + j, 1);
            }
            __builtin_prefetch(c.row(next) + width - 1, 1);
        }
        for (std::ptrdiff_t j = 0; j < share; j += line) {
            __builtin_prefetch(fetched + j, 0, 2);
        }
        addTile<lanes, sign, height, vectors>(RowsCopied<height>{copiedRows}, strip, depth,
                                              rows - i, cols, c.from(i, 0));
    }
}

// The same for strips of `vectors` vectors, of which the last may be the only one and has fewer.
template <int lanes, Sign sign, int vectors = tileVectors<lanes>>
[[gnu::always_inline]] static inline void addCopiedStrips(const double* copiedRows,
                                                          const double* strips, int rows, int depth,
                                                          int cols, Block<double> c) {
    constexpr int width = vectors * lanes, least = (vectors - 1) * lanes;
    const std::ptrdiff_t stripSize = std::ptrdiff_t{depth} * width;
    for (; cols > least; cols -= width, strips += stripSize, c = c.from(0, width)) {
        addCopiedRows<lanes, sign, vectors>(copiedRows, strips, rows, depth, cols, c);
    }
    if constexpr (vectors > 1) {
        addCopiedStrips<lanes, sign, vectors - 1>(copiedRows, strips, rows, depth, cols, c);
    }
}

// Copies the strips that addCopiedStrips takes.
template <int lanes, int vectors = tileVectors<lanes>>
[[gnu::always_inline]] static inline void copyStrips(Block<const double> b, int depth, int cols,
                                                     double* copy) {
    constexpr int width = vectors * lanes, least = (vectors - 1) * lanes;
    for (; cols > least; cols -= width, b = b.from(0, width)) {
        copyStrip<lanes, vectors>(b, depth, cols, copy);
        copy += std::ptrdiff_t{depth} * width;
    }
    if constexpr (vectors > 1) {
        copyStrips<lanes, vectors - 1>(b, depth, cols, copy);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void copyTiles(Block<const double> a, int rows, int depth,
                                                    double* copy) {
    constexpr int height = tileRows<lanes>;
    for (int i = 0; i < rows; i += height, copy += std::ptrdiff_t{depth} * height) {
        copyRows<height>(a.from(i, 0), rows - i, depth, copy);
    }
}

// To a multiple of unit, in 64 bits.
static std::int64_t roundedUp(int number, int unit) {
    return (std::int64_t{number} + unit - 1) / unit * unit;
}

// A product in blocks of these sizes. Copies of rows and of strips lie one behind the other.
template <int lanes, Sign sign>
[[gnu::always_inline]] static inline void addBlocks(Block<const double> a, Block<const double> b,
                                                    int rows, int depth, int cols, Block<double> c,
                                                    const BlockSizes& sizes, double* copiedRows) {
    const std::int64_t room = roundedUp(std::min(rows, sizes.rows), tileRows<lanes>);
    double* const strips = copiedRows + roundedUp(std::min(depth, sizes.depth), 8) * room;
    WorkCount work(static_cast<double>(rows) * depth * cols);
    for (int j = 0; j < cols; j += sizes.cols) {
        const int width = std::min(sizes.cols, cols - j);
        for (int k = 0; k < depth; k += sizes.depth) {
            const int terms = std::min(sizes.depth, depth - k);
            copyStrips<lanes>(b.from(k, j), terms, width, strips);
            for (int i = 0; i < rows; i += sizes.rows) {
                const int count = std::min(sizes.rows, rows - i);
                copyTiles<lanes>(a.from(i, k), count, terms, copiedRows);
                addCopiedStrips<lanes, sign>(copiedRows, strips, count, terms, width, c.from(i, j));
                work.add(static_cast<double>(count) * terms * width);
            }
        }
    }
}

// Copies are made where each serves several times, unless the rows lie together in the second cache
// as they are.
template <int lanes, Sign sign>
[[gnu::always_inline]] static inline void addProduct(Block<const double> a, Block<const double> b,
                                                     int rows, int depth, int cols, Block<double> c,
                                                     ProductRoom& room) {
    constexpr int height = tileRows<lanes>, width = tileWidth<lanes>;
    double* copies = nullptr;
    const BlockSizes sizes = blockSizes<lanes>();
    const double span = static_cast<double>(rows) * static_cast<double>(a.stride) * sizeof(double);
    const bool together = span <= static_cast<double>(caches().secondLevel) / 2;
    if (cols > 3 * width && rows > 3 * height && !together) {
        const std::int64_t lines = roundedUp(std::min(rows, sizes.rows), height) +
                                   roundedUp(std::min(cols, sizes.cols), width);
        const std::int64_t terms = roundedUp(std::min(depth, sizes.depth), 8);
        copies = room.of(static_cast<std::size_t>(terms * lines));
    }
    if (copies != nullptr) {
        addBlocks<lanes, sign>(a, b, rows, depth, cols, c, sizes, copies);
    } else {
        addBlocksInPlace<lanes, sign>(a, b, rows, depth, cols, c);
    }
}

template <int lanes>
[[gnu::always_inline]] static inline void add(Block<const double> a, Block<const double> b,
                                              int rows, int depth, int cols, Block<double> c,
                                              ProductRoom* room) {
    addProduct<lanes, Sign::plus>(a, b, rows, depth, cols, c, *room);
}

template <int lanes>
[[gnu::always_inline]] static inline void subtract(Block<const double> a, Block<const double> b,
                                                   int rows, int depth, int cols, Block<double> c,
                                                   ProductRoom* room) {
    addProduct<lanes, Sign::minus>(a, b, rows, depth, cols, c, *room);
}

FENDRA_FORMS(addForm, add)
FENDRA_FORMS(subtractForm, subtract)

static void tryForm(InstructionSet set) {
    constexpr int rows = 48, depth = 96, cols = 48;
    double a[rows * depth] = {}, b[depth * cols] = {}, c[rows * cols] = {};
    ProductRoom none;
    addForm(set, Block<const double>{a, depth}, Block<const double>{b, cols}, rows, depth, cols,
            Block<double>{c, cols}, &none);
}

InstructionSet productForm(double multiplyAdds) {
    static MeasuredForm form(tryForm);
    return form.setFor(multiplyAdds);
}

static double workOf(int rows, int depth, int cols) {
    return static_cast<double>(rows) * depth * cols;
}

void multiply(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
              Block<double> c) {
    for (int i = 0; i < rows; ++i) {
        std::fill_n(c.row(i), cols, 0.0);
    }
    ProductRoom room;
    addForm(productForm(workOf(rows, depth, cols)), a, b, rows, depth, cols, c, &room);
}

void subtractProduct(Block<const double> a, Block<const double> b, int rows, int depth, int cols,
                     Block<double> c, ProductRoom& room) {
    subtractForm(productForm(workOf(rows, depth, cols)), a, b, rows, depth, cols, c, &room);
}

}  // namespace kernels
