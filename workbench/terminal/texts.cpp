#include "workbench/terminal/texts.h"

#include "workbench/files/Format.h"
#include "workbench/system/offer.h"

#include <fmt/format.h>

std::string programExamples() {
    return fmt::format(
        "  fendra convolve speech.wav room.wav -o wet.wav      add the echo of a room\n"
        "  fendra deconvolve wet.wav room.wav -o dry.wav       and remove it again\n"
        "  fendra deconvolve measured.csv kernel.csv --auto    as sharp as the noise allows\n"
        "  fendra convolve a.csv b.csv --pad                   the linear result, as text\n"
        "  fendra compare measured.csv kernel.csv              every method, side by side\n"
        "{}"
        "  fendra info speech.wav                              what a file holds\n",
        Offer::here.windows ? "  fendra settings lines.graph                         choose "
                              "settings, and keep them\n"
                            : "");
}

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
