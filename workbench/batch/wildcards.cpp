#include "workbench/batch/wildcards.h"

#include <cstddef>

bool hasWildcards(std::string_view text) {
    return text.find_first_of("*?[") != std::string_view::npos;
}

// Length of the set that a pattern starts with; 0: the bracket stands for itself.
static std::size_t setLength(std::string_view pattern) {
    const std::size_t first = pattern.substr(1).starts_with('!') ? 2 : 1;
    const std::size_t close = pattern.find(']', first + 1);
    return close == std::string_view::npos ? 0 : close + 1;
}

static bool isInSet(char letter, std::string_view set) {
    set = set.substr(1, set.size() - 2);
    const bool negated = set.starts_with('!');
    set.remove_prefix(negated ? 1 : 0);
    bool found = false;
    for (std::size_t i = 0; i < set.size(); ++i) {
        const bool range = i + 2 < set.size() && set[i + 1] == '-';
        found = found || (range ? set[i] <= letter && letter <= set[i + 2] : set[i] == letter);
        i += range ? 2 : 0;
    }
    return found != negated;
}

// Characters of a pattern that stand for that letter; 0: none do.
static std::size_t step(char letter, std::string_view pattern) {
    if (pattern.empty()) {
        return 0;
    }
    const std::size_t set = pattern[0] == '[' ? setLength(pattern) : 0;
    if (set != 0) {
        return isInSet(letter, pattern.substr(0, set)) ? set : 0;
    }
    return pattern[0] == '?' || pattern[0] == letter ? 1 : 0;
}

// After a mismatch the last star takes one letter more; those before it never need to.
bool matches(std::string_view name, std::string_view pattern) {
    if (name.starts_with('.') && !pattern.starts_with('.')) {
        return false;
    }
    std::size_t i = 0, j = 0, star = std::string_view::npos, taken = 0;
    while (i < name.size()) {
        if (j < pattern.size() && pattern[j] == '*') {
            star = j++;
            taken = i;
        } else if (const std::size_t length = step(name[i], pattern.substr(j)); length != 0) {
            ++i;
            j += length;
        } else if (star != std::string_view::npos) {
            j = star + 1;
            i = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', j) == std::string_view::npos;
}
