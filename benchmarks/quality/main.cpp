// The quality of the answers: ./bench quality measures all sections, ./bench quality NAME... some.

#include "benchmarks/processorName.h"
#include "benchmarks/quality/sections.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

static const Section sections[] = {
    {"strength", measureStrength}, {"auto", measureAutomatic},         {"places", measurePlaces},
    {"ends", measureEnds},         {"coverage", measureCoverage},      {"sweep", measureSweep},
    {"time", measureTime},         {"predictions", measurePredictions}};

static bool areNames(const std::vector<std::string>& words) {
    const auto isName = [](const std::string& word) {
        return std::any_of(std::begin(sections), std::end(sections),
                           [&](const Section& section) { return section.name == word; });
    };
    const auto stranger = std::find_if_not(words.begin(), words.end(), isName);
    if (stranger == words.end()) {
        return true;
    }
    std::string there;
    for (const Section& section : sections) {
        there += " " + section.name;
    }
    fmt::print(stderr, "quality: no section \"{}\"; there are:{}\n", *stranger, there);
    return false;
}

int main(int argc, char** argv) {
    const std::vector<std::string> names(argv + 1, argv + argc);
    if (!areNames(names)) {
        return 2;
    }
    try {
        fmt::print("{}\n", processorName());
        Laboratory laboratory;
        Figures figures;
        for (const Section& section : sections) {
            if (names.empty() ||
                std::find(names.begin(), names.end(), section.name) != names.end()) {
                section.measure(laboratory, figures);
            }
        }
        fmt::print("\n{}\n", figures.summary());
        return figures.allHold() ? 0 : 1;
    } catch (const std::exception& error) {
        fmt::print(stderr, "quality: {}\n", error.what());
        return 1;
    }
}
