#include "benchmarks/Must.h"

#include <algorithm>

bool Must::holdsAt(Size size) const {
    return sizes.empty() || std::any_of(sizes.begin(), sizes.end(), [size](Size named) {
               return named.m == size.m && named.n == size.n;
           });
}

Standing standingOf(const Figure& found, double least) {
    if (found.value >= least) {
        return Standing::met;
    }
    return found.value + found.spread >= least ? Standing::doubtful : Standing::missed;
}

double leastOf(const std::vector<Must>& musts, const std::string& rival, Size size) {
    double least = 0.0;
    for (const Must& must : musts) {
        if (must.rival == rival && must.holdsAt(size)) {
            least = std::max(least, must.least);
        }
    }
    return least;
}
