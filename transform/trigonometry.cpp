#include "transform/trigonometry.h"

#include <cmath>

double sine(double angle) {
    return std::sin(angle);
}

double cosine(double angle) {
    return std::cos(angle);
}
