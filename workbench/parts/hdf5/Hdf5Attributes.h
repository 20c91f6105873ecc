#pragma once

#include "workbench/parts/hdf5/Hdf5Handle.h"
#include "workbench/parts/variables/Attributes.h"

#include <string>
#include <vector>

// The attributes of a group or dataset. One that is damaged, or longer than any that is of use
// here, counts as none.
class Hdf5Attributes final : public Attributes {
public:
    // The object stays the caller's, open as long as this.
    explicit Hdf5Attributes(hid_t withAttributes) : object(withAttributes) {}

    [[nodiscard]] std::vector<std::string> names() const override;
    [[nodiscard]] std::vector<double> numbers(const std::string& name) const override;
    [[nodiscard]] std::vector<std::string> texts(const std::string& name) const override;

private:
    hid_t object;
};
