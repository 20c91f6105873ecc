#include "benchmarks/ProjectJobs.h"

#include "matrix/SquareMatrix.h"
#include "matrix/Vector.h"
#include "signal/FoldEngine.h"
#include "signal/PseudoInverseUnfolder.h"
#include "signal/VanCittertUnfolder.h"
#include "transform/FourierPlan.h"
#include "transform/FourierTransform.h"
#include "transform/HartleyTransform.h"

#include <cstddef>

// In a namespace without a name, because each build has its own classes of these names.
namespace {

// Two operands, and a result as long as the first.
class SignalJob : public Job {
public:
    void load(const Problem& problem) override {
        operands = problem;
        found.resize(problem.a.size());
    }
    [[nodiscard]] std::vector<double> result() const override { return found; }

protected:
    [[nodiscard]] int lengthOfA() const { return static_cast<int>(operands.a.size()); }
    [[nodiscard]] int lengthOfB() const { return static_cast<int>(operands.b.size()); }

    Problem operands;
    std::vector<double> found;
};

class FoldJob : public SignalJob {
public:
    explicit FoldJob(Size /*size*/) {}
    void run() override {
        require(FoldEngine().fold(operands.a.data(), lengthOfA(), operands.b.data(), lengthOfB(),
                                  found.data(), lengthOfA(), 0) == 1,
                "convolution");
    }
};

class VanCittertJob : public SignalJob {
public:
    explicit VanCittertJob(Size /*size*/) {}
    void run() override {
        VanCittertUnfolder unfolder(0.1, vanCittertLoops, 0, 0.0, 0);
        require(unfolder.unfold(operands.a.data(), lengthOfA(), operands.b.data(), lengthOfB(),
                                found.data(), lengthOfA()) == 1,
                "van Cittert iteration");
    }
};

class PseudoInverseJob : public SignalJob {
public:
    explicit PseudoInverseJob(Size /*size*/) {}
    void run() override {
        PseudoInverseUnfolder unfolder(0);
        require(unfolder.unfold(operands.a.data(), lengthOfA(), operands.b.data(), lengthOfB(),
                                found.data(), lengthOfA()) == 1,
                "pseudo-inverse filter");
    }
};

class TransformJob : public Job {
public:
    explicit TransformJob(Size /*size*/) {}
    void load(const Problem& problem) override { data = problem; }
    void run() override {
        FourierTransform().transform(data.a.data(), data.b.data(), static_cast<int>(data.a.size()),
                                     -1);
    }
    [[nodiscard]] std::vector<double> result() const override {
        std::vector<double> both = data.a;
        both.insert(both.end(), data.b.begin(), data.b.end());
        return both;
    }

protected:
    Problem data;
};

class PlannedTransformJob : public TransformJob {
public:
    explicit PlannedTransformJob(Size size) : TransformJob(size), plan(size.n) {}
    void run() override { plan.transform(data.a.data(), data.b.data(), -1); }

private:
    FourierPlan plan;
};

class Radix2Job : public TransformJob {
public:
    using TransformJob::TransformJob;
    void run() override {
        FourierTransform::radix2Transform(data.a.data(), data.b.data(),
                                          static_cast<int>(data.a.size()), -1.0);
    }
};

class HartleyJob : public Job {
public:
    explicit HartleyJob(Size /*size*/) {}
    void load(const Problem& problem) override { data = problem.a; }
    void run() override {
        HartleyTransform().hartley(data.data(), static_cast<int>(data.size()), 0);
    }
    [[nodiscard]] std::vector<double> result() const override { return data; }

private:
    std::vector<double> data;
};

class MultiplyJob : public Job {
public:
    explicit MultiplyJob(Size size) : n(size.n), a(n, n), b(n, n), product(n, n) {}
    void load(const Problem& problem) override {
        require(a.assignArray(problem.a.data(), n, n) == 1, "copy");
        require(b.assignArray(problem.b.data(), n, n) == 1, "copy");
    }
    void run() override { require(product.multiply(a, b) == 1, "matrix product"); }
    [[nodiscard]] std::vector<double> result() const override {
        return {product.dataBlock, product.dataBlock + static_cast<std::ptrdiff_t>(n) * n};
    }

private:
    int n;
    Matrix<double> a, b, product;
};

class LuJob : public Job {
public:
    explicit LuJob(Size size) : n(size.n), a(n), pivots(n, 1) {}
    void load(const Problem& problem) override {
        require(a.assignArray(problem.a.data(), n, n) == 1, "copy");
    }
    void run() override { require(a.luDecompose(pivots) == 1, "elimination"); }
    [[nodiscard]] std::vector<double> result() const override {
        const std::vector<double> rows = productOfTriangles({a.dataBlock, n, 1}, n);
        std::vector<double> inOrder(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            inOrder[static_cast<std::size_t>(pivots.dataBlock[i])] = rows[i];
        }
        return inOrder;
    }

private:
    int n;
    SquareMatrix<double> a;
    Vector<int> pivots;
};

class SvdJob : public Job {
public:
    explicit SvdJob(Size aSize)
        : size(aSize), a(size.m, size.n), u(size.m, size.n), v(size.n, size.n), w(size.n, 1) {}
    void load(const Problem& problem) override {
        require(a.assignArray(problem.a.data(), size.m, size.n) == 1, "copy");
    }
    void run() override { require(a.svd(u, w, v) == 1, "singular value decomposition"); }
    [[nodiscard]] std::vector<double> result() const override {
        return productOfSingular({u.dataBlock, size.n, 1}, w.dataBlock, {v.dataBlock, size.n, 1},
                                 size);
    }

private:
    Size size;
    Matrix<double> a, u, v;
    Vector<double> w;
};

class QrJob : public Job {
public:
    explicit QrJob(Size aSize) : size(aSize), a(size.m, size.n), q(size.m, size.m), r(a) {}
    void load(const Problem& problem) override {
        require(a.assignArray(problem.a.data(), size.m, size.n) == 1, "copy");
    }
    void run() override { require(a.qr(q, r) == 1, "QR decomposition"); }
    [[nodiscard]] std::vector<double> result() const override {
        return productOfQr({q.dataBlock, size.m, 1}, {r.dataBlock, size.n, 1}, size);
    }

private:
    Size size;
    Matrix<double> a, q, r;
};

}  // namespace

// FENDRA_BUILD is the function of this build.
[[gnu::visibility("default")]] const ProjectJobs& FENDRA_BUILD() {
    static const ProjectJobs jobs = {make<FoldJob>(),
                                     make<VanCittertJob>(),
                                     make<PseudoInverseJob>(),
                                     make<TransformJob>(),
                                     make<PlannedTransformJob>(),
                                     make<Radix2Job>(),
                                     make<HartleyJob>(),
                                     make<MultiplyJob>(),
                                     make<LuJob>(),
                                     make<SvdJob>(),
                                     make<QrJob>()};
    return jobs;
}
