#include "kernels/contract/KernelCase.h"
#include "kernels/reflection.h"
#include "kernels/rotations.h"

#include <algorithm>

namespace kernels {

namespace {

// One dimension of a matrix grows with the size; the other takes every value below 19.
struct Shape {
    int rows, cols;
};

}  // namespace
static Shape tall(int size) {
    return {size, size % 19};
}
static Shape wide(int size) {
    return {size % 19, size};
}

static std::vector<double> valuesOf(Samples& samples) {
    return {samples.data(), samples.data() + samples.size()};
}

// Rows of matrices are some elements apart, and so are those of a vector at every other size.
static int strideOf(Shape shape) {
    return shape.cols + 3;
}
static int stepAt(int size) {
    return 1 + size % 2 * 4;
}

template <Shape (*shape)(int)>
static std::vector<double> runColumnSums(Form form, int size, Input& input) {
    const auto [rows, cols] = shape(size);
    const int stride = strideOf({rows, cols}), step = stepAt(size);
    Samples x = input.take(rows * step), a = input.take(rows * stride), sums = input.take(cols);
    if (form == Form::fast) {
        columnSums(x.data(), step, a.data(), stride, rows, cols, sums.data());
    } else {
        plain::columnSums(x.data(), step, a.data(), stride, rows, cols, sums.data());
    }
    return valuesOf(sums);
}

template <Shape (*shape)(int)>
static std::vector<double> runRowSums(Form form, int size, Input& input) {
    const auto [rows, cols] = shape(size);
    const int stride = strideOf({rows, cols});
    Samples a = input.take(rows * stride), y = input.take(cols), sums = input.take(rows);
    if (form == Form::fast) {
        rowSums(a.data(), stride, rows, cols, y.data(), sums.data());
    } else {
        plain::rowSums(a.data(), stride, rows, cols, y.data(), sums.data());
    }
    return valuesOf(sums);
}

template <Shape (*shape)(int)>
static std::vector<double> runOuterProduct(Form form, int size, Input& input) {
    const auto [rows, cols] = shape(size);
    const int stride = strideOf({rows, cols}), step = stepAt(size);
    Samples x = input.take(rows * step), y = input.take(cols), a = input.take(rows * stride);
    if (form == Form::fast) {
        addOuterProduct(x.data(), step, y.data(), a.data(), stride, rows, cols);
    } else {
        plain::addOuterProduct(x.data(), step, y.data(), a.data(), stride, rows, cols);
    }
    return valuesOf(a);
}

template <Shape (*shape)(int)>
static std::vector<double> runOuterProductAndSums(Form form, int size, Input& input) {
    const auto [rows, cols] = shape(size);
    const int stride = strideOf({rows, cols}), step = stepAt(size);
    Samples x = input.take(rows * step), y = input.take(cols), a = input.take(rows * stride),
            z = input.take(cols), sums = input.take(rows);
    if (form == Form::fast) {
        addOuterProductAndSumRows(x.data(), step, y.data(), a.data(), stride, rows, cols, z.data(),
                                  sums.data());
    } else {
        plain::addOuterProductAndSumRows(x.data(), step, y.data(), a.data(), stride, rows, cols,
                                         z.data(), sums.data());
    }
    std::vector<double> result = valuesOf(a), second = valuesOf(sums);
    result.insert(result.end(), second.begin(), second.end());
    return result;
}

// Vectors in rows and in columns, two of them or one in the place of both, with scales and without,
// in a panel and where they are.
template <Shape (*shape)(int)>
static std::vector<double> runReflections(Form form, int size, Input& input) {
    const auto [rows, cols] = shape(size);
    const int stride = strideOf({rows, cols}), last = std::min(rows, 1 + size % 21);
    Samples x = input.take(rows * last), y = input.take(rows * last), scales = input.take(last),
            a = input.take(rows * stride);
    Samples panel = input.room(static_cast<int>(reflectionPanel(rows, last)));
    ReflectionSequence<double> sequence = {
        x.data(), 1, rows, y.data(), last, 1, nullptr, std::min(last, size % 3), last};
    if (size % 2 == 1) {
        sequence.y = x.data();
        sequence.yStep = 1;
        sequence.yNext = rows;
        sequence.scales = scales.data();
    }
    double* const space = size % 7 == 3 ? nullptr : panel.data();
    if (form == Form::fast) {
        reflectColumns(sequence, a.data(), stride, rows, cols, space);
    } else {
        plain::reflectColumns(sequence, a.data(), stride, rows, cols, space);
    }
    return valuesOf(a);
}

// Two rows, or one in the place of both.
static std::vector<double> runRowRotation(Form form, int size, Input& input) {
    Samples x = input.take(size), other = input.take(size);
    Samples& y = size % 5 == 4 ? x : other;
    Samples angle = input.take(2);
    const PlaneRotation<double> rotation{angle.data()[0], angle.data()[1]};
    if (form == Form::fast) {
        rotateRows(x.data(), y.data(), size, rotation);
    } else {
        plain::rotateRows(x.data(), y.data(), size, rotation);
    }
    std::vector<double> result = valuesOf(x), second = valuesOf(y);
    result.insert(result.end(), second.begin(), second.end());
    return result;
}

// Sweeps over all columns and over some of them, and rotations of one column with others.
template <Shape (*shape)(int), bool sweeps = false>
static std::vector<double> runColumnRotations(Form form, int size, Input& input) {
    const auto [rows, cols] = shape(size);
    std::vector<RotationRun> runs;
    if (cols > 1) {
        const int middle = cols / 2;
        runs = {{0, 1, cols - 1},          {middle - 1, middle, cols - middle},
                {middle - 1, cols - 1, 1}, {0, middle, 1},
                {0, cols - 1, 1},          {0, 1, middle},
                {0, 1, cols - 1}};
        if constexpr (sweeps) {
            const std::vector<RotationRun> more = {{0, 1, cols - 1},
                                                   {0, 1, middle},
                                                   {0, 1, cols - 1},
                                                   {0, 1, cols - 1},
                                                   {0, 1, middle}};
            runs.insert(runs.end(), more.begin(), more.end());
        }
    }
    std::vector<PlaneRotation<double>> rotations;
    for (const RotationRun& run : runs) {
        Samples angles = input.take(2 * run.count);
        for (const double* angle = angles.data(); angle < angles.data() + angles.size();
             angle += 2) {
            rotations.push_back({angle[0], angle[1]});
        }
    }
    Samples a = input.take(rows * cols), panel = input.room(cols * panelRows + panelMargin);
    const int count = static_cast<int>(runs.size());
    if (form == Form::fast) {
        rotateColumns(a.data(), rows, cols, runs.data(), count, rotations.data(), panel.data());
    } else {
        plain::rotateColumns(a.data(), rows, cols, runs.data(), count, rotations.data(),
                             panel.data());
    }
    return valuesOf(a);
}

std::vector<KernelCase> decompositionCases() {
    const std::vector<int> sizes = everySizeAnd({});
    return {{"columnSumsTall", sizes, runColumnSums<tall>},
            {"columnSumsWide", sizes, runColumnSums<wide>},
            {"rowSumsTall", sizes, runRowSums<tall>},
            {"rowSumsWide", sizes, runRowSums<wide>},
            {"outerProductTall", sizes, runOuterProduct<tall>},
            {"outerProductWide", sizes, runOuterProduct<wide>},
            {"outerProductAndSumsTall", sizes, runOuterProductAndSums<tall>},
            {"outerProductAndSumsWide", sizes, runOuterProductAndSums<wide>},
            {"reflectionsTall", sizes, runReflections<tall>},
            {"reflectionsWide", sizes, runReflections<wide>},
            {"rowRotation", sizes, runRowRotation},
            {"columnRotationsTall", sizes, runColumnRotations<tall>},
            {"columnRotationsWide", sizes, runColumnRotations<wide>},
            {"rotationSweepsTall", sizes, runColumnRotations<tall, true>},
            {"rotationSweepsWide", sizes, runColumnRotations<wide, true>}};
}

}  // namespace kernels
