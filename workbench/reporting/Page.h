#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/figures/Picture.h"
#include "workbench/reporting/PageTexts.h"

#include <optional>
#include <string>
#include <vector>

// A piece of text on a page.
struct PageCell {
    enum class Kind {
        label,     // in the language of the page
        sentence,  // as the program has it, which is English
        name,      // of a file
        code,      // what is typed or compared to the letter
        number
    };

    Kind kind = Kind::label;
    std::string text = {};              // of all except labels
    PageText label = PageText::result;  // of labels
};

using PageRow = std::vector<PageCell>;

// The first cell of a row is its head; heads: those of the columns, empty where there are two
// columns, names and values.
struct PageTable {
    PageRow heads = {};
    std::vector<PageRow> rows = {};
};

struct PageSection {
    PageText title = PageText::result;
    std::optional<PageText> note = {};  // before all else
    std::vector<PageCell> lines = {};   // code stands in a box of its own
    std::vector<PageTable> tables = {};
    bool warns = false;

    [[nodiscard]] bool empty() const { return lines.empty() && tables.empty(); }
};

// What a page says of a run. The picture stands after the sections that warn, before all others.
struct Page {
    PageText title = PageText::deconvolution;
    std::vector<std::string> names = {};  // of files, for the title
    std::vector<PageSection> sections = {};
};

// One self-contained HTML page, UTF-8: it asks for nothing from elsewhere, and its policy of
// contents forbids it. Whatever it holds of files is text and nothing else. It is readable without
// scripts, and prints on A4; a script shows the values under the pointer.
//   painted   the figure as SVG whose user units are the pixels of the frames
std::string htmlOf(const Page& page, const Figure& figure, const PaintedFigure& painted,
                   PageLanguage language);

// How a figure is painted for a page: as large as one side of A4 takes at most.
PictureOrder pageOrder(const Figure& figure);
