#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

// Text between tags or in a quoted attribute: nothing in it is markup, control characters and bytes
// that are not UTF-8 became '?'.
std::string htmlText(std::string_view text);

// JSON as the text of a script element that is data. It is ASCII without the signs of markup, so
// that nothing in it ends the element or opens a comment; letters that are not UTF-8 are replaced.
std::string scriptData(const nlohmann::ordered_json& value);

// What a policy of contents calls the text of a script or style: 'sha256-...', quotes included.
std::string policySource(std::string_view text);
