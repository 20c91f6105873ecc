#pragma once

#include "kernels/arithmetic.h"
#include "matrix/Matrix.h"
#include "matrix/RotationQueue.h"

// Implicit QR iteration on the bidiagonal form B, of which w[i] is element (i, i) and e[i] element
// (i - 1, i): rotations from both sides make it diagonal from below, and are applied to U and V.
// The iteration does not read these, so their rotations may be applied later.
template <typename T>
struct BidiagonalIteration {
    const Matrix<T>& matrix;  // its hypotenuse is the one in use
    RotationQueue<T>& u;
    RotationQueue<T>& v;
    T* w;
    T* e;
    T norm;

    // Makes w[k] a singular value up to its sign, after those of higher index; from then on it and
    // columns k of U and V do not change. false: not within the limit.
    bool findValue(int k) {
        for (int pass = 1;; ++pass) {
            const int l = splitAbove(k);
            if (l == k) {
                return true;
            }
            if (pass == passLimit) {
                return false;
            }
            sweep(l, k, shiftedStart(l, k));
        }
    }

private:
    static constexpr int passLimit = 30;  // the last one has no sweep

    // NaN is not negligible.
    [[nodiscard]] bool negligible(T value) const {
        return kernels::sum(kernels::magnitude(value), norm) == norm;
    }

    // The first row l, l <= k, of the lowest block that is separate from those above: e[l] is
    // negligible, or a zero above it lets it be cancelled.
    int splitAbove(int k) {
        for (int l = k; l > 0; --l) {
            if (negligible(e[l])) {
                return l;
            }
            if (negligible(w[l - 1])) {
                cancel(l, k);
                return l;
            }
        }
        return 0;
    }

    // With w[l - 1] zero, rotations of row l - 1 with the rows from l to k drive e[l] out along it.
    // Each leaves s e[i + 1] of the next element in row l - 1 and c e[i + 1] in its own row:
    // without that factor the product of the factors would be another matrix. A negligible f is
    // left, and the rotation before it serves the next element too, of which s e[i] is then no
    // element of B: where that one is much larger, the product misses by about s.
    void cancel(int l, int k) {
        using kernels::negative, kernels::product, kernels::quotient;
        kernels::PlaneRotation<T> rotation{1, 1};
        for (int i = l; i <= k; ++i) {
            const T f = product(rotation.s, e[i]);
            e[i] = product(rotation.c, e[i]);
            if (negligible(f)) {
                continue;
            }
            const T g = w[i];
            w[i] = matrix.hypotenuse(f, g);
            const T reciprocal = quotient(T(1), w[i]);
            rotation = {product(g, reciprocal), product(negative(f), reciprocal)};
            *u.append({l - 1, i, 1}) = rotation;
        }
    }

    // The first element of the shifted B^T B over w[l], where the shift is the eigenvalue of the
    // lower right 2 x 2 of B^T B that is nearer to its last element.
    [[nodiscard]] T shiftedStart(int l, int k) const {
        using kernels::difference, kernels::negative, kernels::product, kernels::quotient,
            kernels::sum;
        const T x = w[l], y = w[k - 1], z = w[k], g = e[k - 1], h = e[k];
        T f = quotient(sum(differenceOfSquares(y, z), differenceOfSquares(g, h)),
                       product(product(T(2), h), y));
        const T root = matrix.hypotenuse(f, T(1));
        f = sum(f, f < T(0) ? negative(root) : root);
        return quotient(sum(differenceOfSquares(x, z), product(h, difference(quotient(y, f), h))),
                        x);
    }

    static T differenceOfSquares(T a, T b) {
        return kernels::product(kernels::difference(a, b), kernels::sum(a, b));
    }

    // One sweep over the block from l to k: the rotation that starts from f puts an element outside
    // of the bidiagonal form, and those that follow chase it down and out.
    void sweep(int l, int k, T f) {
        using kernels::difference, kernels::product, kernels::quotient, kernels::sum;
        kernels::PlaneRotation<T> rotation{1, 1};
        kernels::PlaneRotation<T>* right = v.append({l, l + 1, k - l});
        kernels::PlaneRotation<T>* left = u.append({l, l + 1, k - l});
        T& c = rotation.c;
        T& s = rotation.s;
        T x = w[l];
        for (int j = l; j < k; ++j) {
            T g = product(c, e[j + 1]), h = product(s, e[j + 1]), y = w[j + 1];
            T z = matrix.hypotenuse(f, h);
            e[j] = z;
            rotation = {quotient(f, z), quotient(h, z)};
            f = sum(product(x, c), product(g, s));
            g = difference(product(g, c), product(x, s));
            h = product(y, s);
            y = product(y, c);
            *right++ = rotation;
            z = matrix.hypotenuse(f, h);
            w[j] = z;
            if (z != T(0)) {  // else any rotation will do
                const T reciprocal = quotient(T(1), z);
                rotation = {product(reciprocal, f), product(reciprocal, h)};
            }
            f = sum(product(c, g), product(s, y));
            x = difference(product(c, y), product(s, g));
            *left++ = rotation;
        }
        e[l] = 0;
        e[k] = f;
        w[k] = x;
    }
};
