#pragma once

#include "matrix/MatrixStore.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <numeric>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

// Whether the matrix has these elements, row after row, to the bit.
template <typename T>
bool holds(const MatrixStore<T>& matrix, const std::vector<T>& elements) {
    bool same = matrix.rowCount * matrix.colCount == std::ssize(elements);
    for (int e = 0; same && e < matrix.rowCount * matrix.colCount; ++e) {
        const T* element = matrix.rowTable[e / matrix.colCount] + e % matrix.colCount;
        same = std::memcmp(element, elements.data() + e, sizeof(T)) == 0;
    }
    return same;
}

template <typename T>
std::vector<T> elementsOf(const MatrixStore<T>& matrix) {
    return {matrix.dataBlock, std::next(matrix.dataBlock, matrix.rowCount * matrix.colCount)};
}

// Matrix arithmetic in plain loops, on elements row after row. Results of matrix/ equal theirs bit
// for bit. Integers are computed in 64 bits and wrap when they are stored.
template <typename T>
using Wide = std::conditional_t<std::is_same_v<T, int>, std::int64_t, T>;

template <typename T>
T lessProduct(T v, T a, T b) {
    return static_cast<T>(Wide<T>(v) - Wide<T>(a) * Wide<T>(b));
}

template <typename T>
T over(T a, T b) {
    const bool undefined = std::is_same_v<T, int> && b == 0;
    return undefined ? T(0) : static_cast<T>(Wide<T>(a) / Wide<T>(undefined ? 1 : b));
}

// (m x n) = (m x depth)(depth x n), as a sum of outer products.
template <typename T>
std::vector<T> plainProduct(const T* a, const T* b, int m, int depth, int n) {
    std::vector<T> product(static_cast<std::size_t>(m * n));
    for (int k = 0; k < depth; ++k) {
        for (int e = 0; e < m * n; ++e) {
            product.data()[e] = static_cast<T>(product.data()[e] +
                                               Wide<T>(a[e / n * depth + k]) * b[k * n + e % n]);
        }
    }
    return product;
}

// The last row from k down whose element in column k is largest, each times its scale.
template <typename T>
int plainPivotRow(const T* a, int n, int k, const T* scales) {
    int best = k;
    Wide<T> largest = 0;
    for (int i = k; i < n; ++i) {
        const Wide<T> score = std::abs(Wide<T>(a[i * n + k])) * scales[i];
        best = score >= largest ? i : best;
        largest = std::max(largest, score);
    }
    return best;
}

// Gaussian elimination: each pivot row is subtracted from the whole rest of the matrix. An empty
// order leaves the rows where they are; else it receives theirs. No row may be zero.
template <typename T>
void plainEliminate(T* a, int n, std::vector<int>& order) {
    const bool exchanges = !order.empty();
    std::vector<T> scales(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    for (int e = 0; e < n * n; ++e) {
        T& largest = scales.data()[e / n];
        largest = std::max(largest, std::abs(a[e]));
    }
    for (T& scale : scales) {
        scale = over(T(1), scale);
    }
    for (int k = 0; k < n; ++k) {
        const int best = exchanges ? plainPivotRow(a, n, k, scales.data()) : k;
        if (best != k) {
            std::swap_ranges(a + k * n, a + k * n + n, a + best * n);
            std::swap(scales.data()[k], scales.data()[best]);
            std::swap(order.data()[k], order.data()[best]);
        }
        T& pivot = a[k * n + k];
        pivot = exchanges && pivot == 0 ? static_cast<T>(1e-20) : pivot;
        for (T* row = a + (k + 1) * n; row < a + n * n; row += n) {
            const T inOrder = pivot == 0 ? static_cast<T>(1e8) : over(row[k], pivot);
            row[k] = exchanges ? static_cast<T>(Wide<T>(row[k]) * over(T(1), pivot)) : inOrder;
            for (int j = k + 1; j < n; ++j) {
                row[j] = lessProduct(row[j], row[k], a[k * n + j]);
            }
        }
    }
}

// b becomes the solution. Zeros that lead it, in the order of the rows, take part in no product.
template <typename T>
void plainSolve(const T* factors, int n, const std::vector<int>& order, T* b) {
    const std::vector<T> input(b, b + n);
    int first = n;
    for (int i = n - 1; i >= 0; --i) {
        b[i] = input.data()[order.empty() ? i : order.data()[i]];
        first = b[i] != 0 ? i : first;
    }
    for (int k = first; k < n; ++k) {
        for (int i = k + 1; i < n; ++i) {
            b[i] = lessProduct(b[i], factors[i * n + k], b[k]);
        }
    }
    for (int i = n - 1; i >= 0; --i) {
        for (int k = i + 1; k < n; ++k) {
            b[i] = lessProduct(b[i], factors[i * n + k], b[k]);
        }
        b[i] = over(b[i], factors[i * n + i]);
    }
}

// The lower Cholesky factor, row after row.
inline void plainCholesky(double* a, int n) {
    for (int j = 0; j < n; ++j) {
        for (int i = 0; i < n; ++i) {
            double& v = a[j * n + i];
            for (int k = i; i <= j && k-- > 0;) {
                v -= a[j * n + k] * a[i * n + k];
            }
            v = i < j ? v / a[i * n + i] : i == j ? std::sqrt(v) : 0.0;
        }
    }
}

inline double plainHypotenuse(double a, double b) {
    const double large = std::max(std::abs(a), std::abs(b));
    const double ratio = std::min(std::abs(a), std::abs(b)) / large;
    return large == 0 ? 0 : large * std::sqrt(1 + ratio * ratio);
}

// Singular value decomposition by Householder reduction and implicit QR steps. u starts as the
// matrix, m x n. Vectors are a row or a part of a column: their elements are a stride apart.
struct PlainSvd {
    int m, n;
    std::vector<double> uBlock, wBlock, vBlock, eBlock;
    double *u, *w, *v, *e;
    double norm = 0;

    PlainSvd(const double* a, int rows, int cols)
        : m(rows), n(cols), uBlock(a, a + rows * cols), wBlock(static_cast<std::size_t>(cols)) {
        eBlock = wBlock;
        vBlock.resize(wBlock.size() * wBlock.size());
        u = uBlock.data(), w = wBlock.data(), v = vBlock.data(), e = eBlock.data();
    }
    bool small(double x) const { return std::abs(x) + norm == norm; }

    static double dot(const double* x, int strideX, const double* y, int strideY, int count) {
        double sum = 0;
        for (int k = 0; k < count; ++k) {
            sum += x[k * strideX] * y[k * strideY];
        }
        return sum;
    }
    static void add(double* y, int strideY, double t, const double* x, int strideX, int count) {
        for (int k = 0; k < count; ++k) {
            y[k * strideY] += t * x[k * strideX];
        }
    }
    static void rotate(double* p, double* q, int stride, int count, double c, double s) {
        for (; count-- > 0; p += stride, q += stride) {
            const double x = *p, y = *q;
            *p = x * c + y * s;
            *q = y * c - x * s;
        }
    }
    static std::tuple<double, double, double> householder(double* x, int stride, int count) {
        double scale = 0;
        for (int k = 0; k < count; ++k) {
            scale += std::abs(x[k * stride]);
        }
        if (scale == 0) {
            return {0, 0, 0};
        }
        for (int k = 0; k < count; ++k) {
            x[k * stride] /= scale;
        }
        const double s = dot(x, stride, x, stride, count), f = *x;
        const double g = f >= 0 ? -std::sqrt(s) : std::sqrt(s);
        *x = f - g;
        return {scale, g, f * g - s};
    }

    void reduce() {
        double scale = 0, g = 0, h = 0;
        for (int i = 0; i < n; ++i) {
            double *column = u + i * n + i, *row = column + 1;
            const int right = n - i - 1, below = m - i;
            e[i] = scale * g;
            std::tie(scale, g, h) = householder(column, n, below);
            for (int j = 1; scale != 0 && j <= right; ++j) {
                add(column + j, n, dot(column, n, column + j, n, below) / h, column, n, below);
            }
            for (int k = 0; scale != 0 && k < below; ++k) {
                column[k * n] *= scale;
            }
            w[i] = scale * g;
            norm = std::max(norm, std::abs(w[i]) + std::abs(e[i]));
            std::tie(scale, g, h) = householder(row, 1, right);
            for (int k = 0; scale != 0 && k < right; ++k) {
                e[i + 1 + k] = row[k] / h;
            }
            for (int j = 1; scale != 0 && j < below; ++j) {
                add(row + j * n, 1, dot(row + j * n, 1, row, 1, right), e + i + 1, 1, right);
            }
            for (int k = 0; scale != 0 && k < right; ++k) {
                row[k] *= scale;
            }
        }
    }

    void accumulate() {
        for (int i = n - 1; i >= 0; --i) {
            const int l = i + 1, right = n - l;
            double* column = v + l * n + i;
            for (int k = 0; k < right; ++k) {
                column[k * n] = e[l] == 0 ? 0 : u[i * n + l + k] / u[i * n + l] / e[l];
            }
            for (int j = 1; j <= right && e[l] != 0; ++j) {
                add(column + j, n, dot(u + i * n + l, 1, column + j, n, right), column, n, right);
            }
            for (int j = l; j < n; ++j) {
                v[i * n + j] = v[j * n + i] = 0;
            }
            v[i * n + i] = 1;
        }
        for (int i = n - 1; i >= 0; --i) {
            double* column = u + i * n + i;
            std::fill(column + 1, column + n - i, 0.0);
            for (int j = 1; w[i] != 0 && j < n - i; ++j) {
                const double t = dot(column + n, n, column + n + j, n, m - i - 1);
                add(column + j, n, t / *column * (1 / w[i]), column, n, m - i);
            }
            for (int k = 0; k < m - i; ++k) {
                column[k * n] = w[i] == 0 ? 0 : column[k * n] * (1 / w[i]);
            }
            *column += 1;
        }
    }

    // Whether each value was found in 29 sweeps.
    bool iterate() {
        for (int k = n - 1; k >= 0; --k) {
            for (int sweeps = 0;; ++sweeps) {
                int l = k;
                while (l > 0 && !small(e[l]) && !small(w[l - 1])) {
                    --l;
                }
                if (l > 0 && !small(e[l])) {
                    cancel(l, k);
                }
                if (l == k || sweeps == 29) {
                    break;
                }
                sweep(l, k);
            }
            if (k > 0 && !small(e[k]) && !small(w[k - 1])) {
                return false;
            }
            const double sign = w[k] < 0 ? -1 : 1;
            w[k] *= sign;
            for (int r = 0; r < n; ++r) {
                v[r * n + k] *= sign;
            }
        }
        return true;
    }

    void cancel(int l, int k) {
        double c = 1, s = 1;
        for (int i = l; i <= k; ++i) {
            const double f = s * e[i], h = plainHypotenuse(f, w[i]);
            e[i] *= c;
            if (!small(f)) {
                c = w[i] * (1 / h);
                s = -f * (1 / h);
                w[i] = h;
                rotate(u + l - 1, u + i, n, m, c, s);
            }
        }
    }

    void sweep(int l, int k) {
        double x = w[l], y = w[k - 1], g = e[k - 1], h = e[k], c = 1, s = 1;
        double f = ((y - w[k]) * (y + w[k]) + (g - h) * (g + h)) / (2 * h * y);
        g = plainHypotenuse(f, 1);
        f = ((x - w[k]) * (x + w[k]) + h * (y / (f + (f < 0 ? -g : g)) - h)) / x;
        for (int i = l + 1; i <= k; ++i) {
            h = s * e[i];
            g = c * e[i];
            e[i - 1] = plainHypotenuse(f, h);
            c = f / e[i - 1];
            s = h / e[i - 1];
            rotate(v + i - 1, v + i, n, n, c, s);
            f = x * c + g * s;
            g = g * c - x * s;
            h = w[i] * s;
            y = w[i] * c;
            const double z = w[i - 1] = plainHypotenuse(f, h);
            c = z == 0 ? c : 1 / z * f;
            s = z == 0 ? s : 1 / z * h;
            rotate(u + i - 1, u + i, n, m, c, s);
            f = c * g + s * y;
            x = c * y - s * g;
        }
        e[l] = 0;
        e[k] = f;
        w[k] = x;
    }
};

// Whether plain has found all factors of a.
inline bool plainDecompose(PlainSvd& plain) {
    plain.reduce();
    plain.accumulate();
    return plain.iterate();
}

// The pseudo-inverse of a, n x max(m, n), or nothing.
inline std::vector<double> plainPseudoInverse(std::vector<double> a, int m, int n) {
    const int rows = std::max(m, n);
    a.resize(static_cast<std::size_t>(rows * n));
    PlainSvd svd(a.data(), rows, n);
    const bool found = plainDecompose(svd);
    for (int e = 0; e < rows * n; ++e) {
        const double value = svd.w[e / rows], inverse = value >= 1e-15 ? 1 / value : 0;
        a.data()[e] = svd.u[e % rows * n + e / rows] * inverse;
    }
    return found ? plainProduct(svd.v, a.data(), n, n, rows) : std::vector<double>();
}

// q, the identity on entry, and r, the matrix, become the factors.
inline void plainQr(double* q, double* r, int m, int n) {
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < i && j < n; ++j) {
            const double a = r[j * n + j], b = r[i * n + j], d = std::sqrt(b * b + a * a);
            const double c = d == 0 ? 1 : a / d, s = d == 0 ? 0 : b / d;
            PlainSvd::rotate(q + j, q + i, m, m, c, s);
            PlainSvd::rotate(r + j * n, r + i * n, 1, n, c, s);
        }
    }
}
