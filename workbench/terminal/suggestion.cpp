#include "workbench/terminal/suggestion.h"

#include <algorithm>
#include <cstddef>

// The optimal string alignment distance (F. J. Damerau, Commun. ACM 7 (1964) 171-176).
static std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
                continue;
            }
            const std::size_t change = a[i - 1] == b[j - 1] ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
            }
        }
    }
    return d[a.size()][b.size()];
}

std::string suggestion(const std::string& word, const std::vector<std::string>& candidates) {
    constexpr std::size_t longestWord = 40;  // what is longer was not mistyped
    if (word.size() > longestWord) {
        return "";
    }
    const auto nearest = std::min_element(candidates.begin(), candidates.end(),
                                          [&](const std::string& a, const std::string& b) {
                                              return distance(word, a) < distance(word, b);
                                          });
    if (nearest == candidates.end() || distance(word, *nearest) > 1 + nearest->size() / 4) {
        return "";
    }
    return " (did you mean " + *nearest + "?)";
}
