#include "benchmarks/peers.h"

#include <fftw3.h>

#include <cstddef>
#include <memory>

namespace {

// Arrays where FFTW wants them.
using Array = std::unique_ptr<double[], decltype(&fftw_free)>;
Array newArray(int n) {
    return {fftw_alloc_real(static_cast<std::size_t>(n)), fftw_free};
}

using Plan = std::unique_ptr<fftw_plan_s, decltype(&fftw_destroy_plan)>;

unsigned flags(fftw::Planning planning) {
    return planning == fftw::Planning::measure ? FFTW_MEASURE : FFTW_ESTIMATE;
}

// From one pair of arrays to another, which is faster than in place.
class Arrays : public Job {
public:
    explicit Arrays(int length)
        : n(length), re(newArray(n)), im(newArray(n)), toRe(newArray(n)), toIm(newArray(n)) {}
    void load(const Problem& problem) override {
        std::copy_n(problem.a.data(), n, re.get());
        std::copy_n(problem.b.data(), n, im.get());
    }
    [[nodiscard]] std::vector<double> result() const override {
        std::vector<double> both(toRe.get(), toRe.get() + n);
        both.insert(both.end(), toIm.get(), toIm.get() + n);
        return both;
    }

protected:
    Plan makePlan(fftw::Planning planning) {
        const fftw_iodim dimension = {n, 1, 1};
        return {fftw_plan_guru_split_dft(1, &dimension, 0, nullptr, re.get(), im.get(), toRe.get(),
                                         toIm.get(), flags(planning)),
                fftw_destroy_plan};
    }

    int n;
    Array re, im, toRe, toIm;
};

class TransformJob : public Arrays {
public:
    TransformJob(int length, fftw::Planning planning) : Arrays(length), plan(makePlan(planning)) {}
    void run() override { fftw_execute(plan.get()); }

private:
    Plan plan;
};

class PlanAndTransformJob : public Arrays {
public:
    PlanAndTransformJob(int length, fftw::Planning how) : Arrays(length), planning(how) {}
    // Planning by measurement overwrites the arrays.
    void load(const Problem& problem) override {
        input = problem;
        Arrays::load(problem);
    }
    void run() override {
        fftw_forget_wisdom();
        const Plan plan = makePlan(planning);
        Arrays::load(input);
        fftw_execute(plan.get());
    }

private:
    fftw::Planning planning;
    Problem input;
};

class HartleyJob : public Job {
public:
    HartleyJob(int length, fftw::Planning planning)
        : n(length),
          from(newArray(n)),
          to(newArray(n)),
          plan(fftw_plan_r2r_1d(n, from.get(), to.get(), FFTW_DHT, flags(planning)),
               fftw_destroy_plan) {}
    void load(const Problem& problem) override { std::copy_n(problem.a.data(), n, from.get()); }
    void run() override { fftw_execute(plan.get()); }
    [[nodiscard]] std::vector<double> result() const override { return {to.get(), to.get() + n}; }

private:
    int n;
    Array from, to;
    Plan plan;
};

template <typename SomeJob>
MakeJob makePlanned(fftw::Planning planning) {
    return [planning](Size size) { return std::make_unique<SomeJob>(size.n, planning); };
}

}  // namespace

MakeJob fftw::transform(Planning planning) {
    return makePlanned<TransformJob>(planning);
}
MakeJob fftw::hartley(Planning planning) {
    return makePlanned<HartleyJob>(planning);
}
MakeJob fftw::planAndTransform(Planning planning) {
    return makePlanned<PlanAndTransformJob>(planning);
}
std::string fftw::version() {
    return fftw_version;
}
