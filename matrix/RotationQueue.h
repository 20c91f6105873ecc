#pragma once

#include "kernels/rotations.h"
#include "matrix/Matrix.h"
#include "matrix/newArray.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// Rotations of the columns of a matrix whose elements are not read until apply(). They are
// collected over some sweeps, and then all of them are applied to a few rows at a time, which stay
// in the cache.
template <typename T>
class RotationQueue {
public:
    explicit RotationQueue(Matrix<T>& aMatrix) : matrix(aMatrix) {}

    // For a matrix that will have n columns. false: memory exhausted.
    bool allocate(int n) {
        capacity = std::int64_t{n} * sweeps;
        runs = newArray<kernels::RotationRun>(capacity);
        rotations = newArray<kernels::PlaneRotation<T>>(capacity);
        panel = newArray<T>(std::int64_t{n} * kernels::panelRows + kernels::panelMargin);
        return runs != nullptr && rotations != nullptr && panel != nullptr;
    }

    // The place for the rotations of a run, fewer than n. It is valid until the next run is
    // appended.
    kernels::PlaneRotation<T>* append(const kernels::RotationRun& run) {
        if (rotationCount + run.count > capacity) {
            apply();
        }
        kernels::PlaneRotation<T>* place = rotations.get() + rotationCount;
        runs[static_cast<std::size_t>(runCount++)] = run;
        rotationCount += run.count;
        return place;
    }

    // Applies all that have been appended.
    void apply() {
        if (runCount == 0) {
            return;
        }
        kernels::rotateColumns(matrix.dataBlock, matrix.rowCount, matrix.colCount, runs.get(),
                               runCount, rotations.get(), panel.get());
        runCount = 0;
        rotationCount = 0;
    }

private:
    static constexpr int sweeps = 32;
    Matrix<T>& matrix;
    std::unique_ptr<kernels::RotationRun[]> runs;
    std::unique_ptr<kernels::PlaneRotation<T>[]> rotations;
    std::unique_ptr<T[]> panel;
    int runCount = 0;
    std::int64_t rotationCount = 0, capacity = 0;
};
