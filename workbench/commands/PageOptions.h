#pragma once

#include "workbench/desktop/WindowLibrary.h"
#include "workbench/figures/Figure.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/reporting/Page.h"

#include <memory>
#include <string>

namespace CLI {
class App;
}

// A page being written. Until write has ended, what had its name before is untouched.
class PageFile {
public:
    // Failure if a file of that name exists, unless replace, or it cannot be written; and without
    // the window part, which paints the pictures.
    PageFile(const std::string& file, bool replace);

    // In the language of the user when the file was made. Failure if it cannot be painted, or not
    // be written.
    void write(const Page& page, const Figure& figure);

private:
    PageLanguage language;
    WindowLibrary window;
    OutputFile output;
};

// Where the page of a command is written, if one is wanted.
struct PageOptions {
    std::string file;  // empty: none is wanted

    // Adds --page.
    void addTo(CLI::App& command);
    // To be called before the run. Null: none is wanted. Failure as PageFile.
    [[nodiscard]] std::unique_ptr<PageFile> open(bool replace) const;
};
