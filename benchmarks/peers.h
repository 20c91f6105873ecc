#pragma once

#include "benchmarks/Job.h"

#include <string>

// Other libraries at the same work, one thread each, on operands as each of them likes them best.
// Operands and results are those of ProjectJobs.

namespace eigen {
MakeJob convolutionByProduct();  // with a matrix of all parts of the signal, which overlap
MakeJob convolutionBySums();     // term by term
MakeJob product();
MakeJob lu();
std::string version();
}  // namespace eigen

namespace openBlas {
void useOneThread();
MakeJob convolutionByDots();  // ddot, output by output
MakeJob convolutionBySums();  // daxpy, term by term
MakeJob product();            // dgemm
MakeJob lu();                 // dgetrf of LAPACK
MakeJob svd();                // dgesvd of LAPACK
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
