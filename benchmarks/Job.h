#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

// The size of a piece of work: two lengths, or the rows and columns of a matrix.
struct Size {
    int m, n;
};

// The operands of a piece of work. A matrix lies row after row.
struct Problem {
    std::vector<double> a, b;
};

// One way to do a piece of work of a given size. What can be made ready is made ready when the job
// is made, and counts for nothing.
class Job {
public:
    virtual ~Job() = default;

    // Takes copies of the operands.
    virtual void load(const Problem& problem) = 0;
    // Does the work. A run may overwrite the operands. An exception says that it failed.
    virtual void run() = 0;
    // What the run has found, in a form that all jobs of the work share.
    [[nodiscard]] virtual std::vector<double> result() const = 0;
};

using MakeJob = std::function<std::unique_ptr<Job>(Size size)>;

// A maker of jobs of one class.
template <typename SomeJob>
MakeJob make() {
    return [](Size size) { return std::make_unique<SomeJob>(size); };
}

// Throws std::runtime_error if the work has failed.
void require(bool succeeded, std::string_view work);

// Factors of a matrix are not the same for everyone: pivots differ, and signs of singular vectors.
// What the factors give together is the same, and is seen in the product with a vector x without
// structure. Elements (i, j) of a matrix are at i * rowStep + j * colStep.
struct Factor {
    const double* elements;
    int rowStep, colStep;

    [[nodiscard]] double at(int i, int j) const;
};

// L U x, with both factors in one n x n matrix and a diagonal of 1 in L.
std::vector<double> productOfTriangles(Factor lu, int n);

// The n singular values, descending, and then U diag(w) V^T x, where U has m rows.
std::vector<double> productOfSingular(Factor u, const double* w, Factor v, Size size);

// The magnitudes of the diagonal of R, m x n, and then Q R x. Below its diagonal R is not read.
std::vector<double> productOfQr(Factor q, Factor r, Size size);
