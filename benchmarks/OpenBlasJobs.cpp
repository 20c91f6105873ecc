#include "benchmarks/PeerJobs.h"
#include "benchmarks/peers.h"

#include <cblas.h>
#include <lapack.h>

#include <algorithm>
#include <cstddef>

namespace {

class DotsJob : public ConvolutionJob {
public:
    using ConvolutionJob::ConvolutionJob;
    void run() override {
        const double* part = w.data();
        for (double& sum : sums) {
            sum = cblas_ddot(terms, part++, 1, reversed.data(), 1);
        }
    }
};

class SumsJob : public ConvolutionJob {
public:
    using ConvolutionJob::ConvolutionJob;
    void run() override {
        std::fill(sums.begin(), sums.end(), 0.0);
        const double* part = w.data() + terms;
        for (const double factor : b) {
            cblas_daxpy(outputs, factor, --part, 1, sums.data(), 1);
        }
    }
};

class ProductJob : public Job {
public:
    explicit ProductJob(Size size) : n(size.n) {}
    void load(const Problem& problem) override {
        operands = problem;
        c.resize(problem.a.size());
    }
    void run() override {
        cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, n, n, n, 1.0, operands.a.data(), n,
                    operands.b.data(), n, 0.0, c.data(), n);
    }
    [[nodiscard]] std::vector<double> result() const override { return c; }

private:
    int n;
    Problem operands;
    std::vector<double> c;
};

class LuJob : public ColumnsJob {
public:
    explicit LuJob(Size size) : ColumnsJob(size), exchanges(static_cast<std::size_t>(n)) {}
    void run() override {
        int info = 0;
        LAPACK_dgetrf(&n, &n, columns.data(), &n, exchanges.data(), &info);
        require(info == 0, "dgetrf");
    }
    [[nodiscard]] std::vector<double> result() const override {
        std::vector<double> rows = productOfTriangles({columns.data(), 1, n}, n);
        for (std::size_t i = rows.size(); i-- > 0;) {
            std::swap(rows[i], rows[static_cast<std::size_t>(exchanges[i] - 1)]);
        }
        return rows;
    }

private:
    std::vector<int> exchanges;
};

// One of LAPACK's two decompositions, with as many columns of U as the matrix has.
class SvdJob : public ColumnsJob {
public:
    explicit SvdJob(Size size)
        : ColumnsJob(size),
          w(static_cast<std::size_t>(n)),
          u(columns.size()),
          v(w.size() * w.size()),
          space(1) {}
    void run() override { decompose(static_cast<int>(space.size())); }
    [[nodiscard]] std::vector<double> result() const override {
        return productOfSingular({u.data(), 1, m}, w.data(), {v.data(), n, 1}, {m, n});
    }

protected:
    virtual void decompose(int spaceSize) = 0;
    void makeSpace() {
        decompose(-1);  // asks how much is best
        space.resize(static_cast<std::size_t>(space[0]));
    }

    std::vector<double> w, u, v, space;
};

class QrIterationJob final : public SvdJob {
public:
    explicit QrIterationJob(Size size) : SvdJob(size) { makeSpace(); }

private:
    void decompose(int spaceSize) override {
        int info = 0;
        LAPACK_dgesvd("S", "S", &m, &n, columns.data(), &m, w.data(), u.data(), &m, v.data(), &n,
                      space.data(), &spaceSize, &info);
        require(info == 0, "dgesvd");
    }
};

class DivideAndConquerJob final : public SvdJob {
public:
    explicit DivideAndConquerJob(Size size) : SvdJob(size), integers(8 * w.size()) { makeSpace(); }

private:
    void decompose(int spaceSize) override {
        int info = 0;
        LAPACK_dgesdd("S", &m, &n, columns.data(), &m, w.data(), u.data(), &m, v.data(), &n,
                      space.data(), &spaceSize, integers.data(), &info);
        require(info == 0, "dgesdd");
    }

    std::vector<int> integers;
};

// R, and then all m columns of Q out of the reflections that are stored below it.
class QrJob : public ColumnsJob {
public:
    explicit QrJob(Size size)
        : ColumnsJob(size),
          factors(static_cast<std::size_t>(n)),
          q(static_cast<std::size_t>(m) * static_cast<std::size_t>(m)),
          space(1) {
        decompose(-1);
        double most = space[0];
        makeQ(-1);
        most = std::max(most, space[0]);
        space.resize(static_cast<std::size_t>(most));
    }
    void run() override {
        const int spaceSize = static_cast<int>(space.size());
        decompose(spaceSize);
        std::copy(columns.begin(), columns.end(), q.begin());
        makeQ(spaceSize);
    }
    [[nodiscard]] std::vector<double> result() const override {
        return productOfQr({q.data(), 1, m}, {columns.data(), 1, m}, {m, n});
    }

private:
    void decompose(int spaceSize) {
        int info = 0;
        LAPACK_dgeqrf(&m, &n, columns.data(), &m, factors.data(), space.data(), &spaceSize, &info);
        require(info == 0, "dgeqrf");
    }
    void makeQ(int spaceSize) {
        int info = 0;
        LAPACK_dorgqr(&m, &m, &n, q.data(), &m, factors.data(), space.data(), &spaceSize, &info);
        require(info == 0, "dorgqr");
    }

    std::vector<double> factors, q, space;
};

}  // namespace

void openBlas::useOneThread() {
    openblas_set_num_threads(1);
}
MakeJob openBlas::convolutionByDots() {
    return make<DotsJob>();
}
MakeJob openBlas::convolutionBySums() {
    return make<SumsJob>();
}
MakeJob openBlas::product() {
    return make<ProductJob>();
}
MakeJob openBlas::lu() {
    return make<LuJob>();
}
MakeJob openBlas::svdByQrIteration() {
    return make<QrIterationJob>();
}
MakeJob openBlas::svdByDivision() {
    return make<DivideAndConquerJob>();
}
MakeJob openBlas::qr() {
    return make<QrJob>();
}
std::string openBlas::version() {
    const std::string config = openblas_get_config();  // name, version, options
    return config.substr(0, config.find(' ', config.find(' ') + 1)) + " for " +
           openblas_get_corename();
}
