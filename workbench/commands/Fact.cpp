#include "workbench/commands/Fact.h"

#include "workbench/messages/Printable.h"

#include <fmt/format.h>

// A value as it stands on a line of its own: text without quotes, a list with commas.
static std::string plain(const Json& value) {
    if (value.is_null()) {
        return "not known";
    }
    const Json list = value.is_array() ? value : Json::array({value});
    std::string line;
    for (const Json& entry : list) {
        line += line.empty() ? "" : ", ";
        line += entry.is_null()     ? "none"
                : entry.is_string() ? printable(entry.get<std::string>())
                                    : entry.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    return line;
}

std::string linesOf(const std::vector<Fact>& facts) {
    std::string lines;
    for (const Fact& fact : facts) {
        lines +=
            fmt::format("{:<24}{}\n", fact.name, fact.text.empty() ? plain(fact.value) : fact.text);
    }
    return lines;
}

Json objectOf(const std::vector<Fact>& facts) {
    Json object = Json::object();
    for (const Fact& fact : facts) {
        object[fact.key] = fact.value;
    }
    return object;
}

std::string documentOf(const Json& value) {
    return value.dump(2, ' ', false, Json::error_handler_t::replace);
}
