#pragma once

#include <string>

// Figures that are required of the answers, each with what was measured. They are printed as they
// come, a line each.
class Figures {
public:
    // Prints the head of a group.
    void section(const std::string& title);

    void atMost(const std::string& what, double required, double measured);
    void atLeast(const std::string& what, double required, double measured);
    void between(const std::string& what, double least, double most, double measured);
    // For comparison; nothing is required.
    void note(const std::string& what, double measured);

    [[nodiscard]] bool allHold() const { return missed == 0; }
    [[nodiscard]] std::string summary() const;

private:
    void print(const std::string& what, const std::string& required, double measured, bool holds);

    int count = 0, missed = 0;
};
