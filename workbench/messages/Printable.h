#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The text as a message can show it on one line: control characters and bytes that are not UTF-8
// become '?', and beyond about maximum bytes "..." stands for the rest.
std::string printable(std::string_view text, std::size_t maximum = std::string_view::npos);

// Whether all of the text is UTF-8.
bool isUtf8(std::string_view text);
