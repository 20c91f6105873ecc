#pragma once

#include "benchmarks/Job.h"

#include <string>
#include <vector>

// Other libraries at the same work, one thread each, on operands as each of them likes them best.
// Operands and results are those of ProjectJobs.

// Eigen consists of templates: it is compiled for each instruction set that it has, with fused
// multiply-add.
struct EigenJobs {
    MakeJob convolutionByProduct;  // with a matrix of all parts of the signal, which overlap
    MakeJob convolutionBySums;     // term by term
    MakeJob product;
    MakeJob lu;
};

namespace eigen {
struct Build {
    std::string name;  // "Eigen AVX2"
    const EigenJobs& jobs;
};
// Those for this processor, the widest instruction set last.
std::vector<Build> builds();
std::string version();
}  // namespace eigen

namespace openBlas {
void useOneThread();
MakeJob convolutionByDots();  // ddot, output by output
MakeJob convolutionBySums();  // daxpy, term by term
MakeJob product();            // dgemm
MakeJob lu();                 // dgetrf of LAPACK
MakeJob svdByQrIteration();   // dgesvd of LAPACK
MakeJob svdByDivision();      // dgesdd of LAPACK, divide and conquer
MakeJob qr();                 // dgeqrf and dorgqr of LAPACK
std::string version();        // and the processor that it takes this one for
}  // namespace openBlas

namespace fftw {
enum class Planning { estimate, measure };
// With a plan that is made beforehand.
MakeJob transform(Planning planning);
MakeJob hartley(Planning planning);
// Plan and run, nothing known from before.
MakeJob planAndTransform(Planning planning);
std::string version();
}  // namespace fftw

namespace kissFft {
MakeJob transform();
}

namespace gsl {
MakeJob transform();  // radix 2
MakeJob svd();
std::string version();
}  // namespace gsl
