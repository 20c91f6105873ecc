#pragma once

#include <matio.h>
#include <string>
#include <vector>

// Texts of the library's variables, in UTF-8.

// The rows of a matrix of letters, without the blanks that fill them up; none of what is not one.
std::vector<std::string> rowsOf(const matvar_t& letters);

// A text in UTF-16, each unit a letter of a single row, as such files hold it.
std::u16string lettersOf(const std::string& text);
