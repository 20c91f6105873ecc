#include "workbench/files/text/ColumnChoice.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

// A name, with the unit from a line of its own or without, goes before a number: a column may be
// called 2.
static std::size_t columnNamed(const std::string& word, const TextLayout& layout,
                               const std::string& fileName) {
    const bool whole =
        std::find(layout.names.begin(), layout.names.end(), word) != layout.names.end();
    const auto& names = whole ? layout.names : layout.titles;
    const std::ptrdiff_t found = std::count(names.begin(), names.end(), word);
    if (found == 1) {
        return static_cast<std::size_t>(std::find(names.begin(), names.end(), word) -
                                        names.begin());
    }
    if (found > 1) {
        throw Failure(fmt::format("{}: {} columns are called \"{}\"; give the number of one",
                                  fileName, found, printable(word, shownLength)));
    }
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size() || number < 1 ||
        number > layout.columns) {
        throw Failure(
            fmt::format("{}: no column \"{}\"; give a name of its header, or a number "
                        "from 1 to {}",
                        fileName, printable(word, shownLength), layout.columns));
    }
    return number - 1;
}

ColumnChoice::ColumnChoice(const ReadOptions& options, const TextLayout& layout,
                           const std::string& fileName) {
    const bool axisNamed = !options.axis.empty() && options.axis != "none";
    if (layout.columns == 1) {
        axisSought = false;
        if (!options.part.empty()) {
            columnNamed(options.part, layout, fileName);
        } else if (axisNamed || !options.columns.empty()) {
            remark = fmt::format(
                "{}: its only column is the signal, whatever --axis and --columns "
                "say",
                fileName);
        }
        return;
    }
    axisSought = options.axis.empty();
    if (axisNamed) {
        axis = columnNamed(options.axis, layout, fileName);
    }
    const std::vector<std::string> part = {options.part};
    for (const std::string& word : options.part.empty() ? options.columns : part) {
        const std::size_t column = columnNamed(word, layout, fileName);
        if (column == axis || std::count(channels.begin(), channels.end(), column) != 0) {
            throw Failure(fmt::format("{}: column {} is chosen twice{}; choose it once", fileName,
                                      column + 1,
                                      column == axis ? ", as the axis and as a signal" : ""));
        }
        channels.push_back(column);
    }
    channelsGiven = !channels.empty();
}
