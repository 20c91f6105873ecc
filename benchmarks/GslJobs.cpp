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
Matrix newMatrix(std::size_t n) {
    return {gsl_matrix_alloc(n, n), gsl_matrix_free};
}
Vector newVector(std::size_t n) {
    return {gsl_vector_alloc(n), gsl_vector_free};
}

class SvdJob : public Job {
public:
    explicit SvdJob(Size size) : SvdJob(static_cast<std::size_t>(size.n)) {}
    void load(const Problem& problem) override {
        std::copy(problem.a.begin(), problem.a.end(), u->data);
    }
    void run() override {
        require(gsl_linalg_SV_decomp(u.get(), v.get(), w.get(), space.get()) == GSL_SUCCESS,
                "gsl_linalg_SV_decomp");
    }
    [[nodiscard]] std::vector<double> result() const override {
        const int n = static_cast<int>(u->size1);
        return productOfSingular({u->data, static_cast<int>(u->tda), 1}, w->data,
                                 {v->data, static_cast<int>(v->tda), 1}, n);
    }

private:
    explicit SvdJob(std::size_t n)
        : u(newMatrix(n)), v(newMatrix(n)), w(newVector(n)), space(newVector(n)) {}

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
