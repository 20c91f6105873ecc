#include "workbench/files/text/TextLayout.h"

#include "workbench/files/text/CellText.h"
#include "workbench/files/text/ClockTime.h"
#include "workbench/files/text/UnitText.h"

#include <algorithm>
#include <cctype>
#include <utility>

static constexpr std::string_view usualSeparators = "\t;, ";
static constexpr std::size_t mostLinesBefore = 1000;

namespace {

// The lines at the beginning of a text, up to the first of the numbers.
class LayoutSearch {
public:
    explicit LayoutSearch(TextOptions textOptions) : options(std::move(textOptions)) {
        if (options.separator) {
            separators = *options.separator;
        } else if (options.decimal == ',') {
            std::erase(separators, ',');
        }
    }

    // False: it is not one of the numbers. following: the line after it, if that is known.
    bool take(std::string_view line, const std::optional<std::string>& following);
    [[nodiscard]] TextLayout layout() const;

private:
    using Cells = std::vector<std::string_view>;

    [[nodiscard]] static Cells cellsOf(std::string_view line, char separator);
    [[nodiscard]] bool isData(const Cells& cells) const;
    [[nodiscard]] bool beginsWithData(const Cells& cells, char separator) const;
    [[nodiscard]] bool isNaming(const Cells& cells) const;
    [[nodiscard]] std::optional<char> separatorOf(std::string_view line) const;
    [[nodiscard]] std::optional<char> separatorAmongWords(std::string_view line) const;
    [[nodiscard]] char separatorWithHeader() const;
    [[nodiscard]] std::size_t nameLines(const TextLayout& found) const;
    void name(TextLayout& found, std::size_t lines) const;

    TextOptions options;
    std::string separators{usualSeparators};
    bool told = false;                // by a line sep=;
    std::vector<std::string> before;  // without that
    std::string data;
    std::optional<char> dataSeparator;  // without regard to the header
    bool quotedNumbers = true;          // a number in quotes is a number, not the name of a column
};

}  // namespace

LayoutSearch::Cells LayoutSearch::cellsOf(std::string_view line, char separator) {
    Cells cells;
    CellCutter cutter(line, separator);
    for (std::string_view cell; cutter.next(cell);) {
        cells.push_back(cell);
    }
    return cells;
}

// Alone; an empty line of separators is not.
bool LayoutSearch::isData(const Cells& cells) const {
    return std::all_of(cells.begin(), cells.end(),
                       [this](std::string_view cell) {
                           return (quotedNumbers || !cell.starts_with('"')) &&
                                  isDatum(cell, options);
                       }) &&
           std::any_of(cells.begin(), cells.end(),
                       [](std::string_view cell) { return !withoutQuotes(cell).empty(); });
}

// Among words, too: 1,x. Titles may begin with a number and a blank: 5 mm slit.
bool LayoutSearch::beginsWithData(const Cells& cells, char separator) const {
    const auto isNumber = [this](std::string_view cell) { return isData({cell}); };
    return cells.size() > 1 && isNumber(cells[0]) &&
           (separator != ' ' || 2 * std::count_if(cells.begin(), cells.end(), isNumber) >
                                    static_cast<std::ptrdiff_t>(cells.size()));
}

// Whether the cells are names or units: words, at least one, and empty ones.
bool LayoutSearch::isNaming(const Cells& cells) const {
    bool any = false;
    for (const std::string_view cell : cells) {
        if (!cell.empty() && isData({cell})) {
            return false;
        }
        any = any || !cell.empty();
    }
    return any;
}

// The first separator that is in the line and divides it into data.
std::optional<char> LayoutSearch::separatorOf(std::string_view line) const {
    for (const char separator : separators) {
        const Cells cells = cellsOf(line, separator);
        if (cells.size() > 1 && isData(cells)) {
            return separator;
        }
    }
    return isData({trimmed(line)}) ? std::optional(options.separator.value_or('\0')) : std::nullopt;
}

// The first separator that leaves a number in front of the rest.
std::optional<char> LayoutSearch::separatorAmongWords(std::string_view line) const {
    for (const char separator : separators) {
        if (beginsWithData(cellsOf(line, separator), separator)) {
            return separator;
        }
    }
    return std::nullopt;
}

bool LayoutSearch::take(std::string_view line, const std::optional<std::string>& following) {
    if (before.empty() && !told && line.size() == 5 && line.starts_with("sep=") &&
        std::isalnum(static_cast<unsigned char>(line[4])) == 0 &&
        std::string_view("+-.\"#%").find(line[4]) == std::string_view::npos) {
        told = true;
        options.separator = options.separator.value_or(line[4]);
        separators = *options.separator;
        return false;
    }
    quotedNumbers = !following || following->find('"') != std::string::npos;
    const std::string_view uncommented = withoutComment(line, options);
    data = separatorOf(line) ? line : uncommented;
    const std::optional<char> found = separatorOf(data);
    dataSeparator = found ? found : separatorAmongWords(data);
    if (!dataSeparator) {
        before.emplace_back(line);
        return false;
    }
    quotedNumbers = data.find('"') != std::string::npos;
    return true;
}

// The first separator that divides the header and the data alike, as far as there is a header.
char LayoutSearch::separatorWithHeader() const {
    if (!before.empty() && !options.separator) {
        for (const char separator : separators) {
            const Cells cells = cellsOf(data, separator);
            if (cells.size() > 1 && (isData(cells) || beginsWithData(cells, separator)) &&
                countCells(before.back(), separator) == cells.size()) {
                return separator;
            }
        }
        double ignored = 0.0;
        if (countCells(before.back(), ',') == 1 &&
            readNumber(trimmed(data), true, ignored) != NumberKind::notANumber) {
            return '\0';
        }
    }
    return *dataSeparator;
}

// How many lines, next to the data, name the columns: a header, or a header and units.
std::size_t LayoutSearch::nameLines(const TextLayout& found) const {
    const auto fits = [&found](const Cells& cells) {
        return cells.size() >= found.columns &&
               std::all_of(cells.begin() + static_cast<std::ptrdiff_t>(found.columns), cells.end(),
                           [](std::string_view cell) { return cell.empty(); });
    };
    if (before.empty()) {
        return 0;
    }
    const Cells last = cellsOf(before.back(), found.separator);
    if (before.size() == 1) {
        // Blanks divide titles, too; by another sign, too many or too few names are a fault.
        return fits(last) || (last.size() > 1 && found.separator != ' ') ? 1 : 0;
    }
    const Cells above = cellsOf(before[before.size() - 2], found.separator);
    if (fits(last) && fits(above) && isNaming(last) && !isData(above) &&
        std::all_of(last.begin(), last.end(), isUnit)) {
        return 2;
    }
    return fits(last) && isNaming(last) ? 1 : 0;
}

static std::string unquoted(std::string_view cell) {
    if (cell.size() < 2 || cell.front() != '"' || cell.back() != '"') {
        return std::string(cell);
    }
    std::string text(cell.substr(1, cell.size() - 2));
    for (std::size_t i = 0; (i = text.find("\"\"", i)) != std::string::npos; ++i) {
        text.erase(i, 1);
    }
    return text;
}

void LayoutSearch::name(TextLayout& found, std::size_t lines) const {
    const std::size_t first = before.size() - lines;
    const Cells titles = cellsOf(before[first], found.separator);
    if (lines == 1) {
        // A header that does not fit is held against the data: these are wrong then.
        const bool fits = titles.size() > found.columns && titles[found.columns].empty();
        found.columns = fits ? found.columns : titles.size();
    }
    const Cells units = lines == 2 ? cellsOf(before.back(), found.separator) : Cells{};
    for (std::size_t i = 0; i < found.columns; ++i) {
        found.titles.push_back(unquoted(titles[i]));
        found.names.push_back(
            withUnit(found.titles[i], units.empty() ? "" : withoutQuotes(units[i])));
    }
    found.header = true;
}

TextLayout LayoutSearch::layout() const {
    TextLayout found;
    found.separator = separatorWithHeader();
    const Cells cells = cellsOf(data, found.separator);
    const Cells last = before.empty() ? Cells{} : cellsOf(before.back(), found.separator);
    found.columns = cells.size();
    while (found.columns > 1 && cells[found.columns - 1].empty() &&
           (last.size() < found.columns || last[found.columns - 1].empty())) {
        --found.columns;  // each line ends with a separator
    }
    for (std::size_t i = 0; i < found.columns; ++i) {
        found.times.push_back(ClockTime::of(cells[i]).has_value());
    }
    const std::size_t named = nameLines(found);
    found.linesBefore = before.size() + (told ? 1 : 0);
    found.passedOver = before.size() - named;
    found.firstPassedOver = found.passedOver > 0 ? before.front() : "";
    if (named > 0) {
        name(found, named);
        found.times.resize(found.columns);
    }
    return found;
}

static std::optional<std::string> taken(const std::function<bool(std::string_view&)>& next) {
    std::string_view line;
    return next(line) ? std::optional<std::string>(line) : std::nullopt;
}

std::optional<TextLayout> findLayout(const std::function<bool(std::string_view&)>& next,
                                     const TextOptions& options) {
    LayoutSearch search(options);
    std::optional<std::string> line = taken(next);
    for (std::size_t lines = 0; line && lines < mostLinesBefore; ++lines) {
        const bool quoted = line->find('"') != std::string::npos;
        const std::optional<std::string> following = quoted ? taken(next) : std::nullopt;
        if (search.take(*line, following)) {
            return search.layout();
        }
        line = quoted ? following : taken(next);
    }
    return std::nullopt;
}
