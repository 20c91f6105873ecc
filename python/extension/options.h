#pragma once

#include "workbench/calls/CallOptions.h"

#include <pybind11/stl.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace pybind11::detail {

// Python gives options as pairs of name and value, both in words.
template <>
struct type_caster<CallOption> {
    PYBIND11_TYPE_CASTER(CallOption, const_name("tuple[str, str]"));

    bool load(handle source, bool convert) {
        make_caster<std::pair<std::string, std::string>> pair;
        if (!pair.load(source, convert)) {
            return false;
        }
        std::tie(value.name, value.value) =
            cast_op<std::pair<std::string, std::string>>(std::move(pair));
        return true;
    }
};

}  // namespace pybind11::detail
