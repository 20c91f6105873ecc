#include "benchmarks/PeerJobs.h"
#include "benchmarks/peers.h"

#include <Eigen/Dense>

#include <cstddef>
#include <optional>

namespace {

using Eigen::Map;
using Eigen::MatrixXd;
using Eigen::VectorXd;

class OverlapJob : public ConvolutionJob {
public:
    using ConvolutionJob::ConvolutionJob;
    void run() override {
        const Map<const MatrixXd, 0, Eigen::OuterStride<1>> parts(w.data(), terms, outputs);
        const Map<const VectorXd> factors(reversed.data(), terms);
        Map<VectorXd>(sums.data(), outputs).noalias() = parts.transpose() * factors;
    }
};

class SumsJob : public ConvolutionJob {
public:
    using ConvolutionJob::ConvolutionJob;
    void run() override {
        const Map<const VectorXd> samples(w.data(), outputs + terms);
        const Map<const VectorXd> factors(b.data(), terms);
        Map<VectorXd> result(sums.data(), outputs);
        result.setZero();
        for (int k = 0; k < terms; ++k) {
            result += factors[k] * samples.segment(terms - 1 - k, outputs);
        }
    }
};

class ProductJob : public Job {
public:
    explicit ProductJob(Size size) : a(size.n, size.n), b(a), c(a) {}
    void load(const Problem& problem) override {
        a = Map<const Rows>(problem.a.data(), a.rows(), a.cols());
        b = Map<const Rows>(problem.b.data(), b.rows(), b.cols());
    }
    void run() override { c.noalias() = a * b; }
    [[nodiscard]] std::vector<double> result() const override {
        return {c.data(), c.data() + c.size()};
    }

private:
    using Rows = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
    Rows a, b, c;
};

class LuJob : public ColumnsJob {
public:
    using ColumnsJob::ColumnsJob;
    void run() override {
        Map<MatrixXd> matrix(columns.data(), n, n);
        factors.emplace(matrix);
    }
    [[nodiscard]] std::vector<double> result() const override {
        const std::vector<double> rows = productOfTriangles({columns.data(), 1, n}, n);
        VectorXd inOrder = Map<const VectorXd>(rows.data(), n);
        inOrder = factors->permutationP().transpose() * inOrder;
        return {inOrder.data(), inOrder.data() + n};
    }

private:
    std::optional<Eigen::PartialPivLU<Eigen::Ref<MatrixXd>>> factors;  // in columns
};

}  // namespace

// FENDRA_BUILD is the function of this build.
[[gnu::visibility("default")]] const EigenJobs& FENDRA_BUILD();
const EigenJobs& FENDRA_BUILD() {
    static const EigenJobs jobs = {make<OverlapJob>(), make<SumsJob>(), make<ProductJob>(),
                                   make<LuJob>()};
    return jobs;
}
