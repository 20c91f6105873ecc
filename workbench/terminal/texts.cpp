#include "workbench/terminal/texts.h"

#include "workbench/files/Format.h"

#include <fmt/format.h>

std::string filesText() {
    return fmt::format(
        "A signal is read from {}; the contents decide which, not the name. Text is columns of "
        "numbers separated by commas, semicolons, tabs or blanks, with # comments, and optionally "
        "a header line and a time column. A result is written in the format that the ending of its "
        "name stands for: {}. An audio result holds 64-bit floats unless --encoding says "
        "otherwise. "
        "- is standard input or output.",
        Format::names("or"), Format::allEndings());
}
