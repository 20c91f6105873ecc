#include "kernels/elimination.h"

#include "kernels/WorkWatch.h"
#include "kernels/product.h"
#include "kernels/vectors.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace kernels {

// Columns are factorised eight at a time, panel by panel. When q panels are done and s is the
// largest power of two that divides q, the next s panels take all products with the last s at once,
// which is the work of subtractProduct. So panels meet in pairs, pairs in fours, and so on; nearly
// all of the work is in large products, and an element takes its own in ascending k still (S.
// Toledo, "Locality of reference in LU decomposition with partial pivoting", SIAM J. Matrix Anal.
// Appl. 18 (1997) 1065-1081).

// The largest magnitude in a row of n elements. Each lane finds its own first.
template <int lanes>
[[gnu::always_inline]] static inline double largestIn(const double* row, int n) {
    constexpr int vectors = 4;
    Vector<lanes> found[std::size_t{vectors}] = {};
    int j = 0;
    for (; j + vectors * lanes <= n; j += vectors * lanes) {
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            const Vector<lanes> element = vectorsAt<lanes>(row + j)[v];
            const Vector<lanes> size = element < 0.0 ? -element : element;
            found[v] = found[v] < size ? size : found[v];
        }
    }
#pragma GCC unroll 16
    for (int v = 1; v < vectors; ++v) {
        found[0] = found[0] < found[v] ? found[v] : found[0];
    }
    double largest = 0.0;
    for (int lane = 0; lane < lanes; ++lane) {
        largest = std::max(largest, found[0][lane]);
    }
    for (; j < n; ++j) {
        largest = std::max(largest, std::abs(row[j]));
    }
    return largest;
}

template <int lanes>
[[gnu::always_inline]] static inline void findAllScales(const double* a, int n, double* scales,
                                                        bool* found) {
    *found = false;
    WorkCount work(WorkCount::unknown);
    for (int i = 0; i < n; ++i) {
        work.add(WorkWatch::element * n);
        const double largest = largestIn<lanes>(a + std::ptrdiff_t{n} * i, n);
        if (largest == 0.0) {
            return;
        }
        scales[i] = 1.0 / largest;
    }
    *found = true;
}

FENDRA_VARIANTS(findScalesVariant, findAllScales)

bool findScales(const double* a, int n, double* scales) {
    bool found = false;
    findScalesVariant(a, n, scales, &found);
    return found;
}

namespace {

// The matrix, and what goes along with its rows when they are exchanged; no scales: they stay.
struct Elimination {
    Block<double> a;
    int n;
    double* scales;
    int* pivots;
    Block<double> panel;  // n rows of eight
    ProductRoom* room;

    // Where panel q starts: the first panel is the one that may have fewer than eight columns.
    [[nodiscard]] int edge(int q) const {
        const int missing = (panelWidth - n % panelWidth) % panelWidth;
        return std::max(0, q * panelWidth - missing);
    }
};

}  // namespace

// A panel is worked on in a copy, whose rows are next to each other: in the matrix they may lie a
// power of two apart, where the caches hold few of them. It has eight columns, if not all of them
// of the matrix; that many are copied without a call.
static void copy(Block<const double> from, int rows, int cols, Block<double> to) {
    for (int i = 0; i < rows; ++i) {
        cols == panelWidth ? std::copy_n(from.row(i), panelWidth, to.row(i))
                           : std::copy_n(from.row(i), cols, to.row(i));
    }
}

// The factor that clears the element of a row in column t of the panel takes its place, and the
// columns right of it take the product with the pivot's row. All eight are computed, and chosen
// lane by lane.
template <int lanes>
[[gnu::always_inline]] static inline void clearColumn(const double* pivotRow, int t, bool exchanged,
                                                      Block<double> rows, int count) {
    constexpr int vectors = panelWidth / lanes;
    Vector<lanes> upper[std::size_t{vectors}], columns[std::size_t{vectors}] = {};
#pragma GCC unroll 16
    for (int v = 0; v < vectors; ++v) {
        upper[v] = vectorsAt<lanes>(pivotRow)[v];
        for (int lane = 0; lane < lanes; ++lane) {
            columns[v][lane] = v * lanes + lane;
        }
    }
    const double pivot = pivotRow[t], reciprocal = 1.0 / pivot, column = t;
    for (int i = 0; i < count; ++i) {
        double factor = rows.row(i)[t];
        if (exchanged) {
            factor *= reciprocal;
        } else {
            factor = pivot == 0.0 ? 1e8 : factor / pivot;
        }
#pragma GCC unroll 16
        for (int v = 0; v < vectors; ++v) {
            VectorInMemory<lanes>& elements = vectorsAt<lanes>(rows.row(i))[v];
            const Vector<lanes> rest = elements - upper[v] * factor;
            const Vector<lanes> cleared =
                columns[v] == column ? factor - Vector<lanes>{} : elements;
            elements = columns[v] > column ? rest : cleared;
        }
    }
}

// Brings the pivot of column first + t to its row. Inline like the rest: a function translated for
// the baseline, called while wide registers are in use, runs at half the speed.
//
// A candidate is rarely the largest so far. Told so, in just this form, g++ makes a branch of the
// test; it would make a choice of values otherwise, each of which waits for the one before, and the
// whole would take half as long again at n = 32.
[[gnu::always_inline]] static inline void exchangeRows(const Elimination& e, int first, int t) {
    const int j = first + t;
    double best = 0.0;
    int pivotRow = j;
    for (int i = j; i < e.n; ++i) {
        const double candidate = std::abs(e.panel.row(i - first)[t]) * e.scales[i];
        const auto larger = static_cast<long>(candidate >= best);
        if (static_cast<bool>(__builtin_expect_with_probability(larger, 0, 0.99))) {
            best = candidate;
            pivotRow = i;
        }
    }
    double* row = e.panel.row(t);
    if (pivotRow != j) {
        std::swap_ranges(e.a.row(pivotRow), e.a.row(pivotRow) + e.n, e.a.row(j));
        std::swap_ranges(row, row + panelWidth, e.panel.row(pivotRow - first));
        e.scales[pivotRow] = e.scales[j];
        std::swap(e.pivots[pivotRow], e.pivots[j]);
    }
    if (row[t] == 0.0) {
        row[t] = 1e-20;
    }
}

// Columns from `first` on, eight or fewer, from the diagonal down.
template <int lanes>
[[gnu::always_inline]] static inline void eliminatePanel(const Elimination& e, int first,
                                                         int cols) {
    const int rows = e.n - first;
    const Block<double> columns = e.a.from(first, first);
    copy(columns, rows, cols, e.panel);
    for (int t = 0; t < cols; ++t) {
        exchangeRows(e, first, t);
        clearColumn<lanes>(e.panel.row(t), t, true, e.panel.from(t + 1, 0), rows - t - 1);
    }
    copy(e.panel, rows, cols, columns);
}

// The same in order: first the rows that have a pivot, then the others, part by part.
template <int lanes>
[[gnu::always_inline]] static inline void eliminatePanelInOrder(const Elimination& e, int first,
                                                                int cols) {
    constexpr int partRows = 64;
    double upperElements[panelWidth * panelWidth] = {}, elements[partRows * panelWidth] = {};
    const Block<double> upper{upperElements, panelWidth}, panel{elements, panelWidth};
    copy(e.a.from(first, first), cols, cols, upper);
    for (int t = 0; t < cols; ++t) {
        clearColumn<lanes>(upper.row(t), t, false, upper.from(t + 1, 0), cols - t - 1);
    }
    copy(upper, cols, cols, e.a.from(first, first));
    for (int i = first + cols; i < e.n; i += partRows) {
        const int rows = std::min(partRows, e.n - i);
        copy(e.a.from(i, first), rows, cols, panel);
        for (int t = 0; t < cols; ++t) {
            clearColumn<lanes>(upper.row(t), t, false, panel, rows);
        }
        copy(panel, rows, cols, e.a.from(i, first));
    }
}

// Rows top to bottom - 1, at most eight, and columns from to to - 1, a multiple of eight: each row
// takes the products with the rows above it.
template <int lanes>
[[gnu::always_inline]] static inline void reduceRows(Block<double> a, int top, int bottom, int from,
                                                     int to) {
    for (int j = from; j < to; j += lanes) {
        for (int i = top + 1; i < bottom; ++i) {
            Vector<lanes> elements = *vectorsAt<lanes>(a.row(i) + j);
            for (int k = top; k < i; ++k) {
                elements -= a.row(i)[k] * *vectorsAt<lanes>(a.row(k) + j);
            }
            *vectorsAt<lanes>(a.row(i) + j) = elements;
        }
    }
}

static int powerOfTwoIn(int q) {
    return q & -q;
}

// A product, as a part of all multiply-adds of the elimination, which share counts.
static WorkPart takePart(const Elimination& e, int rows, int depth, int cols, double& share) {
    const double before = share, n = e.n;
    share += 3.0 * (rows / n) * (depth / n) * (cols / n);
    return {before, share};
}

// The columns from the end of panel q - 1 up to column `to` have taken all products with the panels
// before the last s; now they take those with the last s. First the rows of these, which become
// rows of U: panel by panel and in the same manner. Then all rows below.
template <int lanes>
[[gnu::always_inline]] static inline void reduceRight(const Elimination& e, int q, int s, int to,
                                                      double& share) {
    const int from = e.edge(q - s), end = e.edge(q), cols = to - end;
    for (int p = 1; p <= s; ++p) {
        const int done = q - s + p, t = powerOfTwoIn(p);
        const int first = e.edge(done - t), last = e.edge(done);
        reduceRows<lanes>(e.a, e.edge(done - 1), last, end, to);
        const int rows = std::min(e.edge(done + t), end) - last;
        const WorkPart part = takePart(e, rows, last - first, cols, share);
        subtractProduct(e.a.from(last, first), e.a.from(first, end), rows, last - first, cols,
                        e.a.from(last, end), *e.room);
    }
    const WorkPart part = takePart(e, e.n - end, end - from, cols, share);
    subtractProduct(e.a.from(end, from), e.a.from(from, end), e.n - end, end - from, cols,
                    e.a.from(end, end), *e.room);
}

template <int lanes>
[[gnu::always_inline]] static inline void eliminatePanels(const Elimination& e) {
    double share = 0.0;
    for (int q = 1; e.edge(q - 1) < e.n; ++q) {
        const int first = e.edge(q - 1), cols = e.edge(q) - first;
        e.scales != nullptr ? eliminatePanel<lanes>(e, first, cols)
                            : eliminatePanelInOrder<lanes>(e, first, cols);
        const int s = powerOfTwoIn(q);
        reduceRight<lanes>(e, q, s, std::min(e.edge(q + s), e.n), share);
    }
}

FENDRA_VARIANTS(eliminateVariant, eliminatePanels)

// If rows are whole pages apart, the elements of a column, and the rows of a tile, share so few
// places of the first cache that they drive each other out. Then the work is done in a copy whose
// rows are a line more apart, unless it is too large to go unnoticed or there is no memory for it.
static void eliminateApart(Elimination e) {
    constexpr int page = 512, line = 8;
    constexpr std::int64_t most = 1 << 23;
    ProductRoom room;
    e.room = &room;
    const Block<double> matrix = e.a;
    const std::int64_t stride = e.n + line, size = stride * e.n;
    std::unique_ptr<double[]> elements;
    if (e.n % page == 0 && size <= most) {
        elements.reset(new (std::nothrow) double[static_cast<std::size_t>(size)]);
    }
    if (elements == nullptr) {
        eliminateVariant(e);
        return;
    }
    e.a = {elements.get(), static_cast<std::ptrdiff_t>(stride)};
    copy(matrix, e.n, e.n, e.a);
    eliminateVariant(e);
    copy(e.a, e.n, e.n, matrix);
}

void eliminate(double* a, int n, double* scales, int* pivots, double* panel) {
    std::iota(pivots, pivots + n, 0);
    std::fill_n(panel, std::ptrdiff_t{panelWidth} * n, 0.0);
    eliminateApart({{a, n}, n, scales, pivots, {panel, panelWidth}, nullptr});
}

void eliminate(double* a, int n) {
    eliminateApart({{a, n}, n, nullptr, nullptr, {nullptr, 0}, nullptr});
}

}  // namespace kernels
