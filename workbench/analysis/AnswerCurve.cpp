#include "workbench/analysis/AnswerCurve.h"

#include "kernels/WorkWatch.h"

static double robustGcv(double error, double left, double squares) {
    constexpr double g = 0.2;
    return error / (left * left) * (g + (1.0 - g) * squares);
}

// An empty bin adds nothing to the error, however far it diverges.
CurvePoint AnswerCurve::at(double parameter, const std::optional<NoiseModel>& noise) const {
    kernels::WorkWatch::passed(4.0 * kernels::WorkWatch::element *
                               static_cast<double>(powers.signal.size()));
    CurvePoint point{.parameter = parameter};
    double freedomLeft = 0.0;  // N - A, small where nearly everything is kept
    for (std::size_t j = 0; j < powers.signal.size(); ++j) {
        const int times = powers.multiplicity(j);
        const std::complex<double> rest = left(j, parameter), phi = 1.0 - rest;
        if (powers.signal[j] != 0.0) {
            point.error += times * powers.signal[j] * std::norm(rest);
        }
        freedomLeft += times * rest.real();
        point.kept += times * phi.real();
        point.squares += times * std::norm(phi);
        point.leftSquares += times * std::norm(rest);
        if (noise) {
            point.noiseKept += times * noise->power()[j] * (2.0 * phi.real() + std::norm(phi));
        }
    }
    const double degrees = powers.degrees();
    point.error /= powers.length;
    point.noiseKept *= powers.oversampling;
    point.criterion = noise
                          ? point.error + point.noiseKept
                          : robustGcv(point.error, freedomLeft / degrees, point.squares / degrees);
    return point;
}
