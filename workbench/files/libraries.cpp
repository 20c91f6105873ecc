#include "workbench/files/libraries.h"

#include "workbench/files/Format.h"
#include "workbench/files/parts/PartProgram.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

// The formats of each program, which are several where a library reads several.
static std::vector<std::pair<const PartProgram*, std::string>> programs() {
    std::vector<std::pair<const PartProgram*, std::string>> all;
    for (const Format* format : Format::all()) {
        if (format->program == nullptr) {
            continue;
        }
        const auto known = std::find_if(all.begin(), all.end(), [format](const auto& each) {
            return std::string_view(each.first->name) == format->program->name;
        });
        if (known == all.end()) {
            all.emplace_back(format->program, format->name);
        } else {
            known->second += fmt::format(", {}", format->name);
        }
    }
    return all;
}

std::vector<std::string> libraries() {
    std::vector<std::string> lines;
    for (const auto& [program, formats] : programs()) {
        try {
            lines.push_back(fmt::format("{}: {}", formats, program->version(formats)));
        } catch (const Failure& failure) {
            lines.emplace_back(failure.what());
        }
    }
    return lines;
}
