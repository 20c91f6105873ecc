#pragma once

#include <string_view>

// Patterns for names of files, as shells have them: * stands for any characters, ? for one, [abc],
// [a-z] and [!a-z] for one of a set. A dot at the start of a name is matched by a dot alone.

bool hasWildcards(std::string_view text);

// Whether all of a name, without folders, is as the pattern says.
bool matches(std::string_view name, std::string_view pattern);
