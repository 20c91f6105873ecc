#include "benchmarks/PeerJobs.h"
#include "benchmarks/peers.h"

#include <gsl/gsl_fft_complex.h>
#include <gsl/gsl_linalg.h>
#include <gsl/gsl_version.h>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace {

// In place.
class TransformJob : public ComplexJob {
public:
    using ComplexJob::ComplexJob;
    void run() override {
        auto* parts = reinterpret_cast<double*>(input.data());
        require(gsl_fft_complex_radix2_forward(parts, 1, input.size()) == GSL_SUCCESS,
                "gsl_fft_complex_radix2_forward");
    }
    [[nodiscard]] std::vector<double> result() const override { return partsOf(input); }
};

using Matrix = std::unique_ptr<gsl_matrix, decltype(&gsl_matrix_free)>;
using Vector = std::unique_ptr<gsl_vector, decltype(&gsl_vector_free)>;
Matrix newMatrix(int m, int n) {
    return {gsl_matrix_alloc(static_cast<std::size_t>(m), static_cast<std::size_t>(n)),
            gsl_matrix_free};
}
Vector newVector(int n) {
    return {gsl_vector_alloc(static_cast<std::size_t>(n)), gsl_vector_free};
}

class SvdJob : public Job {
public:
    explicit SvdJob(Size aSize)
        : size(aSize),
          u(newMatrix(size.m, size.n)),
          v(newMatrix(size.n, size.n)),
          w(newVector(size.n)),
          space(newVector(size.n)) {}
    void load(const Problem& problem) override {
        std::copy(problem.a.begin(), problem.a.end(), u->data);
    }
    void run() override {
        require(gsl_linalg_SV_decomp(u.get(), v.get(), w.get(), space.get()) == GSL_SUCCESS,
                "gsl_linalg_SV_decomp");
    }
    [[nodiscard]] std::vector<double> result() const override {
        return productOfSingular({u->data, static_cast<int>(u->tda), 1}, w->data,
                                 {v->data, static_cast<int>(v->tda), 1}, size);
    }

private:
    Size size;
    Matrix u, v;
    Vector w, space;
};

}  // namespace

MakeJob gsl::transform() {
    return make<TransformJob>();
}
MakeJob gsl::svd() {
    return make<SvdJob>();
}
std::string gsl::version() {
    return std::string("GSL ") + gsl_version;
}
