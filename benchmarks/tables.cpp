#include "benchmarks/ProjectJobs.h"
#include "benchmarks/Table.h"
#include "benchmarks/peers.h"

#include <fmt/core.h>

#include <algorithm>
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
    const std::size_t count = static_cast<std::size_t>(size.m) * static_cast<std::size_t>(size.n);
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
// The same of a matrix, whichever side is longer.
static double boundOfFactors(Size size) {
    const int longer = std::max(size.m, size.n);
    return boundOfSums({longer, longer});
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

static std::vector<Size> powersOfTwo(int first, int last) {
    std::vector<Size> sizes;
    for (int exponent = first; exponent <= last; ++exponent) {
        sizes.push_back({1 << exponent, 1 << exponent});
    }
    return sizes;
}

static std::vector<Size> operator+(std::vector<Size> sizes, const std::vector<Size>& more) {
    sizes.insert(sizes.end(), more.begin(), more.end());
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

// All builds of Eigen that run here, and another peer.
static std::vector<Rival> eigenAnd(MakeJob EigenJobs::*job, const Rival& other) {
    std::vector<Rival> peers;
    for (const eigen::Build& build : eigen::builds()) {
        peers.push_back({build.name, build.jobs.*job});
    }
    peers.push_back(other);
    return peers;
}

// So many times as fast as each of the peers.
static std::vector<Must> least(double ratio, const std::vector<Rival>& peers) {
    std::vector<Must> musts;
    musts.reserve(peers.size());
    for (const Rival& peer : peers) {
        musts.push_back({peer.name, ratio});
    }
    return musts;
}

static Table convolutionTable() {
    const EigenJobs& eigenJobs = eigen::builds().back().jobs;
    const std::vector<Rival> peers = {
        {"Eigen product", eigenJobs.convolutionByProduct},
        {"Eigen sums", eigenJobs.convolutionBySums},
        {"OpenBLAS ddot", openBlas::convolutionByDots()},
        {"daxpy", openBlas::convolutionBySums()},
    };
    std::vector<Must> musts = least(2.0, peers);
    musts.push_back({Must::peak, 0.73});
    return {
        .name = "convolution",
        .title = "FoldEngine in the time domain",
        .sizes = {{1000, 1000}, {1024, 1024}, {4096, 4096}, {65535, 1024}, {16384, 16384}},
        .label = lengths,
        .problem = twoSignals,
        .operands = Table::Operands::kept,
        .flops = [](Size size) { return 2.0 * squareOf(size); },
        .bound = boundOfSums,
        .project = fendraJobs().fold,
        .rivals = against(&ProjectJobs::fold, peers),
        .musts = musts,
    };
}

static std::vector<Table> signalTables() {
    return {
        convolutionTable(),
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

// A transform of a complex signal, beside those of other libraries.
static Table transformTable(const std::string& name, const std::string& title,
                            const std::vector<Size>& sizes, MakeJob ProjectJobs::*job,
                            const std::vector<Rival>& peers, const std::vector<Must>& musts) {
    return {
        .name = name,
        .title = title,
        .sizes = sizes,
        .label = name == "radix2" ? powerOfTwo : length,
        .problem = twoSignals,
        .operands = Table::Operands::zeros,
        .flops = complexFlops,
        .bound = boundOfTransform,
        .project = fendraJobs().*job,
        .rivals = against(job, peers),
        .musts = musts,
    };
}

static std::vector<Table> transformTables() {
    using fftw::Planning;
    const Rival measured = {"FFTW measured", fftw::transform(Planning::measure)};
    const std::vector<Size> others = squares({100, 1000, 5000, 10007, 44100, 65535, 1000000});
    return {
        transformTable("radix2",
                       "FourierTransform at powers of two; FFTW with its plan made before",
                       powersOfTwo(8, 20), &ProjectJobs::radix2,
                       {
                           measured,
                           {"estimated", fftw::transform(Planning::estimate)},
                           {"KissFFT", kissFft::transform()},
                           {"GSL", gsl::transform()},
                       },
                       {{measured.name, 1.0}}),
        transformTable("transform",
                       "FourierTransform at other lengths; FFTW with plan and run together", others,
                       &ProjectJobs::transform,
                       {
                           {"FFTW estimated", fftw::planAndTransform(Planning::estimate)},
                       },
                       {}),
        transformTable("planned",
                       "FourierPlan made before, at other lengths; FFTW with its plan made before",
                       others, &ProjectJobs::plannedTransform, {measured},
                       {{measured.name, 0.5, squares({1000, 5000, 44100})},
                        {measured.name, 0.8, squares({10007, 65535})}}),
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

static Table productTable() {
    const std::vector<Rival> peers =
        eigenAnd(&EigenJobs::product, {"OpenBLAS dgemm", openBlas::product()});
    return {
        .name = "product",
        .title = "Matrix::multiply, n x n",
        .sizes = squares({128, 256, 512, 1000, 1024}),
        .label = length,
        .problem = twoMatrices,
        .operands = Table::Operands::kept,
        .flops = [](Size size) { return 2.0 * cubeOf(size); },
        .bound = boundOfSums,
        .project = fendraJobs().multiply,
        .rivals = against(&ProjectJobs::multiply, peers),
        .musts = least(1.0, peers),
    };
}

static Table luTable() {
    const std::vector<Rival> peers = eigenAnd(&EigenJobs::lu, {"OpenBLAS dgetrf", openBlas::lu()});
    return {
        .name = "lu",
        .title = "SquareMatrix::luDecompose with pivots, n x n; Eigen's PartialPivLU",
        .sizes = squares({256, 512, 1024, 2048}),
        .label = length,
        .problem = twoMatrices,
        .operands = Table::Operands::reloaded,
        .flops = eliminationFlops,
        .bound = boundOfSums,
        .project = fendraJobs().lu,
        .rivals = against(&ProjectJobs::lu, peers),
        .musts = least(1.0, peers),
    };
}

static const std::vector<Size> tall = {{400, 100}, {800, 200}, {2000, 50}};

// Both factors out of reflections, and rotations of both: 8 m n^2 + 14 n^3 or so.
static double singularFlops(Size size) {
    return 8.0 * squareOf(size) * size.n + 14.0 * cubeOf({size.n, size.n});
}
// R and all of Q, by reflections, which take the least.
static double qrFlops(Size size) {
    return 2.0 * squareOf(size) * size.n - 2.0 / 3.0 * cubeOf({size.n, size.n}) +
           4.0 * squareOf(size) * (size.m - size.n) + 4.0 / 3.0 * cubeOf({size.n, size.n});
}

static std::vector<Table> matrixTables() {
    const std::vector<Size> musts = squares({100, 200, 400, 800});
    return {
        productTable(),
        luTable(),
        {
            .name = "svd",
            .title = "Matrix::svd, m x n; counted as 8 m n^2 + 14 n^3 operations",
            .sizes = squares({50}) + musts + tall,
            .label = lengths,
            .problem = twoMatrices,
            .operands = Table::Operands::reloaded,
            .flops = singularFlops,
            .bound = boundOfFactors,
            .project = fendraJobs().svd,
            .rivals = against(&ProjectJobs::svd,
                              {
                                  {"OpenBLAS dgesvd", openBlas::svdByQrIteration()},
                                  {"dgesdd", openBlas::svdByDivision()},
                                  {.name = "GSL", .make = gsl::svd(), .longest = 400},
                              }),
            .musts = {{"OpenBLAS dgesvd", 2.0, musts}, {"dgesdd", 0.8, musts}},
        },
        {
            .name = "qr",
            .title = "Matrix::qr, m x n, by rotations; the operations are those of reflections",
            .sizes = squares({50, 100, 200, 400, 800}) + tall,
            .label = lengths,
            .problem = twoMatrices,
            .operands = Table::Operands::reloaded,
            .flops = qrFlops,
            .bound = boundOfFactors,
            .project = fendraJobs().qr,
            .rivals = against(&ProjectJobs::qr, {{"OpenBLAS dgeqrf + dorgqr", openBlas::qr()}}),
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
