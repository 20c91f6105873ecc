#pragma once

#include "workbench/desktop/WindowLibrary.h"
#include "workbench/figures/Figure.h"
#include "workbench/files/disk/OutputFile.h"

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

// A picture being written. Until write has ended, what had its name before is untouched.
class PlotFile {
public:
    // Failure if a file of that name exists, unless replace, or it cannot be written; and without
    // the window part, which paints.
    PlotFile(const std::string& file, bool replace);

    // Failure if it cannot be painted, or not be written.
    void write(const Figure& figure, const PictureOrder& order);

private:
    WindowLibrary window;
    OutputFile output;
};

// Where a command writes a picture, if one is wanted, and what it is to look like.
struct PlotOptions {
    std::string file, size;  // empty: none is wanted; as many pixels as the panes take
    std::optional<double> from, to;

    // Adds --plot, --size, --from and --to.
    void addTo(CLI::App& command);
    // Adds -o and the others, where the picture is all that the command writes.
    void addAsOutputTo(CLI::App& command);

    // To be called before the run. Null: no picture is wanted. Failure as PlotFile, CLI::ParseError
    // where options do not go together.
    [[nodiscard]] std::unique_ptr<PlotFile> open(bool replace) const;
    [[nodiscard]] PictureOrder order(const Figure& figure) const;
};
