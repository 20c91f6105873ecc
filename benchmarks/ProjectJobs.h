#pragma once

#include "benchmarks/Job.h"

// The work of the project through its public classes, in three builds of the same code.
struct ProjectJobs {
    MakeJob fold;              // FoldEngine, time domain: a (m samples) with b (n samples)
    MakeJob vanCittert;        // ten loops: signal a, kernel b (n samples each)
    MakeJob pseudoInverse;     // the same operands
    MakeJob transform;         // FourierTransform, sign -1: a + i b (n samples)
    MakeJob plannedTransform;  // the same with a FourierPlan made before
    MakeJob radix2;            // the same with radix2Transform
    MakeJob hartley;           // HartleyTransform, not normalised: a (n samples)
    MakeJob multiply;          // Matrix: a times b (n x n)
    MakeJob lu;                // SquareMatrix, with pivots: a (n x n)
    MakeJob svd;               // Matrix: a (m x n)
    MakeJob qr;                // Matrix: a (m x n)
};

// As released.
const ProjectJobs& fendraJobs();
// With the plain loop in the place of every kernel.
const ProjectJobs& plainJobs();
// With products and sums contracted where the compiler likes to, which changes results. Only for
// processors with fused multiply-add.
const ProjectJobs& contractedJobs();

constexpr int vanCittertLoops = 10;
