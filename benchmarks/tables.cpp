#include "benchmarks/ProjectJobs.h"
#include "benchmarks/Table.h"
#include "benchmarks/peers.h"

#include <fmt/core.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>

static constexpr double epsilon = std::numeric_limits<double>::epsilon();

// n numbers of [-1, 1), always the same.
static std::vector<double> noise(std::size_t n, unsigned seed) {
    std::minstd_rand generator(seed);
    std::uniform_real_distribution<double> spread(-1.0, 1.0);
    std::vector<double> numbers(n);
    for (double& number : numbers) {
        number = spread(generator);
    }
    return numbers;
}

static Problem twoSignals(Size size) {
    return {noise(static_cast<std::size_t>(size.m), 1), noise(static_cast<std::size_t>(size.n), 2)};
}

static Problem twoMatrices(Size size) {
    const std::size_t count = static_cast<std::size_t>(size.n) * static_cast<std::size_t>(size.n);
    return {noise(count, 1), noise(count, 2)};
}

// A kernel whose spectrum stays near 1: iterations converge, and equations are well conditioned.
static Problem signalAndKernel(Size size) {
    Problem problem = twoSignals(size);
    for (double& sample : problem.b) {
        sample /= size.n;
    }
    problem.b.front() = 1.0;
    return problem;
}

static std::string length(Size size) {
    return std::to_string(size.n);
}
static std::string powerOfTwo(Size size) {
    return fmt::format("2^{:.0f}", std::log2(size.n));
}
static std::string lengths(Size size) {
    return fmt::format("{} x {}", size.m, size.n);
}

// A sum of n products is off by n roundings of the sum of their magnitudes at most, and that is
// about sqrt(n) times as large as the sums of noise themselves.
static double boundOfSums(Size size) {
    return epsilon * size.n * std::sqrt(size.n);
}
// The recurrence of twiddles adds up a rounding per step.
static double boundOfTransform(Size size) {
    return epsilon * (size.n + 32.0);
}

static std::vector<Size> squares(std::initializer_list<int> lengths) {
    std::vector<Size> sizes;
    for (const int n : lengths) {
        sizes.push_back({n, n});
    }
    return sizes;
}

static double squareOf(Size size) {
    return static_cast<double>(size.m) * size.n;
}
static double cubeOf(Size size) {
    return squareOf(size) * size.n;
}

static double complexFlops(Size size) {
    return 5.0 * size.n * std::log2(size.n);
}
// A convolution for the first estimate, and two for each step.
static double iterationFlops(Size size) {
    return 2.0 * squareOf(size) * (2.0 * vanCittertLoops - 1.0);
}
static double eliminationFlops(Size size) {
    return 2.0 / 3.0 * cubeOf(size);
}

// The plain loops, the contracted build where the processor has fused multiply-add, and the peers.
static std::vector<Rival> against(MakeJob ProjectJobs::*job, const std::vector<Rival>& peers) {
    std::vector<Rival> rivals = {{"plain loop", plainJobs().*job, true}};
#if defined(__x86_64__) || defined(__i386__)
    if (__builtin_cpu_supports("fma")) {
        rivals.push_back({"contracted", contractedJobs().*job});
    }
#endif
    rivals.insert(rivals.end(), peers.begin(), peers.end());
    return rivals;
}

static std::vector<Table> signalTables() {
    return {
        {
            .name = "convolution",
            .title = "FoldEngine in the time domain",
            .sizes = {{1000, 1000}, {1024, 1024}, {4096, 4096}, {65535, 1024}, {16384, 16384}},
            .label = lengths,
            .problem = twoSignals,
            .operands = Table::Operands::kept,
            .flops = [](Size size) { return 2.0 * squareOf(size); },
            .bound = boundOfSums,
            .project = fendraJobs().fold,
            .rivals = against(&ProjectJobs::fold,
                              {
                                  {"Eigen product", eigen::convolutionByProduct()},
                                  {"Eigen sums", eigen::convolutionBySums()},
                                  {"OpenBLAS ddot", openBlas::convolutionByDots()},
                                  {"daxpy", openBlas::convolutionBySums()},
                              }),
        },
        {
            .name = "van-cittert",
            .title = "VanCittertUnfolder, ten loops",
            .sizes = squares({1024, 4096}),
            .label = length,
            .problem = signalAndKernel,
            .operands = Table::Operands::kept,
            .flops = iterationFlops,
            .bound = boundOfSums,
            .project = fendraJobs().vanCittert,
            .rivals = against(&ProjectJobs::vanCittert, {}),
        },
        {
            .name = "pseudo-inverse",
            .title = "PseudoInverseUnfolder; counted as 2/3 n^3 operations",
            .sizes = squares({256, 1024}),
            .label = length,
            .problem = signalAndKernel,
            .operands = Table::Operands::kept,
            .flops = eliminationFlops,
            .bound = boundOfSums,
            .project = fendraJobs().pseudoInverse,
            .rivals = against(&ProjectJobs::pseudoInverse, {}),
        },
    };
}

static std::vector<Table> transformTables() {
    using fftw::Planning;
    return {
        {
            .name = "radix2",
            .title = "FourierTransform at powers of two; FFTW with its plan made before",
            .sizes = squares({1 << 8, 1 << 10, 1 << 12, 1 << 14, 1 << 16, 1 << 18, 1 << 20}),
            .label = powerOfTwo,
            .problem = twoSignals,
            .operands = Table::Operands::zeros,
            .flops = complexFlops,
            .bound = boundOfTransform,
            .project = fendraJobs().radix2,
            .rivals = against(&ProjectJobs::radix2,
                              {
                                  {"FFTW measured", fftw::transform(Planning::measure)},
                                  {"estimated", fftw::transform(Planning::estimate)},
                                  {"KissFFT", kissFft::transform()},
                                  {"GSL", gsl::transform()},
                              }),
        },
        {
            .name = "transform",
            .title = "FourierTransform at other lengths; FFTW with plan and run together",
            .sizes = squares({1000, 5000, 10007, 65535}),
            .label = length,
            .problem = twoSignals,
            .operands = Table::Operands::zeros,
            .flops = complexFlops,
            .bound = boundOfTransform,
            .project = fendraJobs().transform,
            .rivals = against(&ProjectJobs::transform,
                              {
                                  {"FFTW estimated", fftw::planAndTransform(Planning::estimate)},
                                  {"measured", fftw::planAndTransform(Planning::measure)},
                                  {"its run alone", fftw::transform(Planning::measure)},
                              }),
        },
        {
            .name = "hartley",
            .title = "HartleyTransform; FFTW with its plan made before",
            .sizes = squares({1 << 10, 1 << 12, 1 << 14, 1 << 16, 1 << 18, 1 << 20}),
            .label = powerOfTwo,
            .problem = twoSignals,
            .operands = Table::Operands::zeros,
            .flops = [](Size size) { return complexFlops(size) / 2.0; },
            .bound = boundOfTransform,
            .project = fendraJobs().hartley,
            .rivals = against(&ProjectJobs::hartley,
                              {
                                  {"FFTW measured", fftw::hartley(Planning::measure)},
                                  {"estimated", fftw::hartley(Planning::estimate)},
                              }),
        },
    };
}

static std::vector<Table> matrixTables() {
    return {
        {
            .name = "product",
            .title = "Matrix::multiply, n x n",
            .sizes = squares({128, 256, 512, 1024}),
            .label = length,
            .problem = twoMatrices,
            .operands = Table::Operands::kept,
            .flops = [](Size size) { return 2.0 * cubeOf(size); },
            .bound = boundOfSums,
            .project = fendraJobs().multiply,
            .rivals = against(&ProjectJobs::multiply,
                              {
                                  {"Eigen", eigen::product()},
                                  {"OpenBLAS dgemm", openBlas::product()},
                              }),
        },
        {
            .name = "lu",
            .title = "SquareMatrix::luDecompose with pivots, n x n",
            .sizes = squares({256, 512, 1024, 2048}),
            .label = length,
            .problem = twoMatrices,
            .operands = Table::Operands::reloaded,
            .flops = eliminationFlops,
            .bound = boundOfSums,
            .project = fendraJobs().lu,
            .rivals = against(&ProjectJobs::lu,
                              {
                                  {"Eigen PartialPivLU", eigen::lu()},
                                  {"OpenBLAS dgetrf", openBlas::lu()},
                              }),
        },
        {
            .name = "svd",
            .title = "Matrix::svd, n x n; counted as 22 n^3 operations",
            .sizes = squares({100, 200, 400}),
            .label = length,
            .problem = twoMatrices,
            .operands = Table::Operands::reloaded,
            .flops = [](Size size) { return 22.0 * cubeOf(size); },
            .bound = boundOfSums,
            .project = fendraJobs().svd,
            .rivals = against(&ProjectJobs::svd,
                              {
                                  {"OpenBLAS dgesvd", openBlas::svd()},
                                  {"GSL", gsl::svd()},
                              }),
        },
    };
}

std::vector<Table> allTables() {
    std::vector<Table> all = signalTables();
    for (const auto& tables : {transformTables(), matrixTables()}) {
        all.insert(all.end(), tables.begin(), tables.end());
    }
    return all;
}
