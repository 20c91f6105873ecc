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

static double complexFlops(Size size) {
    return 5.0 * size.n * std::log2(size.n);
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

// The plain loops, the contracted build where the processor has fused multiply-add, and the peers.
static std::vector<Rival> against(MakeJob ProjectJobs::*job, const std::vector<Rival>& peers) {
    std::vector<Rival> rivals = {{"plain loop", plainJobs().*job, true}};
#if defined(__x86_64__) || defined(__i386__)
    if (__builtin_cpu_supports("fma") != 0) {
        rivals.push_back({"contracted", contractedJobs().*job});
    }
#endif
    rivals.insert(rivals.end(), peers.begin(), peers.end());
    return rivals;
}

static std::vector<Table> signalTables() {
    const auto ofConvolution = [](Size size) { return 2.0 * squareOf(size); };
    // A convolution for the first estimate, and two for each step.
    const auto ofIteration = [](Size size) {
        return 2.0 * squareOf(size) * (2.0 * vanCittertLoops - 1.0);
    };
    return {
        {"convolution",
         "FoldEngine in the time domain",
         {{1000, 1000}, {1024, 1024}, {4096, 4096}, {65535, 1024}, {16384, 16384}},
         lengths,
         twoSignals,
         Table::Operands::kept,
         ofConvolution,
         boundOfSums,
         fendraJobs().fold,
         against(&ProjectJobs::fold, {{"Eigen product", eigen::convolutionByProducts()},
                                      {"Eigen sums", eigen::convolutionBySums()},
                                      {"OpenBLAS ddot", openBlas::convolutionByDots()},
                                      {"daxpy", openBlas::convolutionBySums()}})},
        {"van-cittert", "VanCittertUnfolder, ten loops", squares({1024, 4096}), length,
         signalAndKernel, Table::Operands::kept, ofIteration, boundOfSums, fendraJobs().vanCittert,
         against(&ProjectJobs::vanCittert, {})},
        {"pseudo-inverse", "PseudoInverseUnfolder", squares({256, 1024}), length, signalAndKernel,
         Table::Operands::kept, [](Size size) { return 2.0 / 3.0 * cubeOf(size); }, boundOfSums,
         fendraJobs().pseudoInverse, against(&ProjectJobs::pseudoInverse, {})}};
}

static std::vector<Table> transformTables() {
    using fftw::Planning;
    const std::vector<Size> powersOfTwo =
        squares({1 << 8, 1 << 10, 1 << 12, 1 << 14, 1 << 16, 1 << 18, 1 << 20});
    return {{"radix2", "FourierTransform at powers of two; FFTW with its plan made before",
             powersOfTwo, powerOfTwo, twoSignals, Table::Operands::zeros, complexFlops,
             boundOfTransform, fendraJobs().radix2,
             against(&ProjectJobs::radix2, {{"FFTW measured", fftw::transform(Planning::measure)},
                                            {"estimated", fftw::transform(Planning::estimate)},
                                            {"KissFFT", kissFft::transform()},
                                            {"GSL", gsl::transform()}})},
            {"transform", "FourierTransform at other lengths; FFTW with plan and run together",
             squares({1000, 5000, 10007, 65535}), length, twoSignals, Table::Operands::zeros,
             complexFlops, boundOfTransform, fendraJobs().transform,
             against(&ProjectJobs::transform,
                     {{"FFTW estimated", fftw::planAndTransform(Planning::estimate)},
                      {"measured", fftw::planAndTransform(Planning::measure)},
                      {"its run alone", fftw::transform(Planning::measure)}})},
            {"hartley",
             "HartleyTransform; FFTW with its plan made before",
             {powersOfTwo.begin() + 1, powersOfTwo.end()},
             powerOfTwo,
             twoSignals,
             Table::Operands::zeros,
             [](Size size) { return complexFlops(size) / 2.0; },
             boundOfTransform,
             fendraJobs().hartley,
             against(&ProjectJobs::hartley, {{"FFTW measured", fftw::hartley(Planning::measure)},
                                             {"estimated", fftw::hartley(Planning::estimate)}})}};
}

static std::vector<Table> matrixTables() {
    return {
        {"product", "Matrix::multiply, n x n", squares({128, 256, 512, 1024}), length, twoMatrices,
         Table::Operands::kept, [](Size size) { return 2.0 * cubeOf(size); }, boundOfSums,
         fendraJobs().multiply,
         against(&ProjectJobs::multiply,
                 {{"Eigen", eigen::product()}, {"OpenBLAS dgemm", openBlas::product()}})},
        {"lu", "SquareMatrix::luDecompose with pivots, n x n", squares({256, 512, 1024, 2048}),
         length, twoMatrices, Table::Operands::reloaded,
         [](Size size) { return 2.0 / 3.0 * cubeOf(size); }, boundOfSums, fendraJobs().lu,
         against(&ProjectJobs::lu,
                 {{"Eigen PartialPivLU", eigen::lu()}, {"OpenBLAS dgetrf", openBlas::lu()}})},
        {"svd", "Matrix::svd, n x n; counted as 22 n^3 operations", squares({100, 200, 400}),
         length, twoMatrices, Table::Operands::reloaded,
         [](Size size) { return 22.0 * cubeOf(size); }, boundOfSums, fendraJobs().svd,
         against(&ProjectJobs::svd, {{"OpenBLAS dgesvd", openBlas::svd()}, {"GSL", gsl::svd()}})}};
}

std::vector<Table> allTables() {
    std::vector<Table> all = signalTables();
    for (const auto& tables : {transformTables(), matrixTables()}) {
        all.insert(all.end(), tables.begin(), tables.end());
    }
    return all;
}
