#include "benchmarks/quality/Figures.h"

#include <fmt/core.h>

#include <cstdio>

void Figures::section(const std::string& title) {
    fmt::print("\n{:<64}{:>16}{:>11}\n", title, "required", "measured");
}

void Figures::print(const std::string& what, const std::string& required, double measured,
                    bool holds) {
    fmt::print("  {:<62}{:>16}{:>11.4g}{}\n", what, required, measured, holds ? "" : "  MISSED");
    std::fflush(stdout);
    ++count;
    missed += holds ? 0 : 1;
}

// Not a number holds nowhere.
void Figures::atMost(const std::string& what, double required, double measured) {
    print(what, fmt::format("<= {:g}", required), measured, measured <= required);
}

void Figures::atLeast(const std::string& what, double required, double measured) {
    print(what, fmt::format(">= {:g}", required), measured, measured >= required);
}

void Figures::between(const std::string& what, double least, double most, double measured) {
    print(what, fmt::format("{:g} .. {:g}", least, most), measured,
          measured >= least && measured <= most);
}

void Figures::note(const std::string& what, double measured) {
    fmt::print("  {:<62}{:>16}{:>11.4g}\n", what, "", measured);
}

std::string Figures::summary() const {
    return fmt::format("{} of {} figures hold", count - missed, count);
}
