#include "benchmarks/Job.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>

void require(bool succeeded, std::string_view work) {
    if (!succeeded) {
        throw std::runtime_error(std::string(work) + " failed");
    }
}

double Factor::at(int i, int j) const {
    return elements[static_cast<std::ptrdiff_t>(i) * rowStep +
                    static_cast<std::ptrdiff_t>(j) * colStep];
}

static double x(int i) {
    return std::sin(1.0 + i);
}

std::vector<double> productOfTriangles(Factor lu, int n) {
    std::vector<double> upper, all;
    for (int i = 0; i < n; ++i) {
        double sum = 0.0;
        for (int j = i; j < n; ++j) {
            sum += lu.at(i, j) * x(j);
        }
        upper.push_back(sum);
    }
    for (int i = 0; i < n; ++i) {
        double sum = upper[static_cast<std::size_t>(i)];
        for (int j = 0; j < i; ++j) {
            sum += lu.at(i, j) * upper[static_cast<std::size_t>(j)];
        }
        all.push_back(sum);
    }
    return all;
}

std::vector<double> productOfSingular(Factor u, const double* w, Factor v, Size size) {
    std::vector<double> found(w, w + size.n), scaled;
    std::sort(found.rbegin(), found.rend());
    for (int j = 0; j < size.n; ++j) {
        double sum = 0.0;
        for (int i = 0; i < size.n; ++i) {
            sum += v.at(i, j) * x(i);
        }
        scaled.push_back(sum * w[j]);
    }
    for (int i = 0; i < size.m; ++i) {
        double sum = 0.0;
        for (int j = 0; j < size.n; ++j) {
            sum += u.at(i, j) * scaled[static_cast<std::size_t>(j)];
        }
        found.push_back(sum);
    }
    return found;
}

std::vector<double> productOfQr(Factor q, Factor r, Size size) {
    const int rank = std::min(size.m, size.n);
    std::vector<double> found, upper;
    for (int i = 0; i < rank; ++i) {
        found.push_back(std::abs(r.at(i, i)));
        double sum = 0.0;
        for (int j = i; j < size.n; ++j) {
            sum += r.at(i, j) * x(j);
        }
        upper.push_back(sum);
    }
    for (int i = 0; i < size.m; ++i) {
        double sum = 0.0;
        for (int j = 0; j < rank; ++j) {
            sum += q.at(i, j) * upper[static_cast<std::size_t>(j)];
        }
        found.push_back(sum);
    }
    return found;
}
