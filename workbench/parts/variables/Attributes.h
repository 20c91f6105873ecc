#pragma once

#include <string>
#include <vector>

// What is written beside a variable: values under names.
class Attributes {
public:
    virtual ~Attributes() = default;

    // All names, in the order of the file.
    [[nodiscard]] virtual std::vector<std::string> names() const = 0;

    // The values of an attribute; empty if there is none of that name or it is not of that kind.
    [[nodiscard]] virtual std::vector<double> numbers(const std::string& name) const = 0;
    [[nodiscard]] virtual std::vector<std::string> texts(const std::string& name) const = 0;

    // The first one; empty if there is none.
    [[nodiscard]] std::string text(const std::string& name) const {
        const std::vector<std::string> all = texts(name);
        return all.empty() ? "" : all.front();
    }
};
