#include "workbench/reporting/Page.h"

#include "page/page.css.h"
#include "page/page.js.h"
#include "workbench/reporting/html.h"
#include "workbench/reporting/paneNumbers.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

template <std::size_t size>
static std::string_view textOf(const unsigned char (&bytes)[size]) {
    return {reinterpret_cast<const char*>(bytes), size};
}

namespace {

// Writes a page in a language.
class PageWriter {
public:
    explicit PageWriter(PageLanguage pageLanguage) : language(pageLanguage) {}

    void addHead(const Page& page);
    void addSection(const PageSection& section);
    void addPicture(const Figure& figure, const PaintedFigure& painted);
    void addEnd(const Figure& figure, const PaintedFigure& painted);

    std::string html;

private:
    [[nodiscard]] std::string said(PageText text) const {
        return htmlText(pageText(text, language));
    }
    [[nodiscard]] std::string title(const Page& page, const char* before, const char* after) const;
    [[nodiscard]] std::string cell(const PageCell& cell) const;
    void addLines(const std::vector<PageCell>& lines);
    void addRow(const PageRow& row, bool heads);
    void addTable(const PageTable& table);

    PageLanguage language;
};

}  // namespace

// The names take the places of {0} and {1}, whatever signs they hold themselves.
std::string PageWriter::title(const Page& page, const char* before, const char* after) const {
    std::string_view rest = pageText(page.title, language);
    std::string text;
    for (std::size_t sign = rest.find('{'); sign != std::string_view::npos; sign = rest.find('{')) {
        const auto number = static_cast<std::size_t>(rest.at(sign + 1) - '0');
        text += htmlText(rest.substr(0, sign)) + before + htmlText(page.names.at(number)) + after;
        rest.remove_prefix(sign + 3);
    }
    return text + htmlText(rest);
}

// The script and the style are known by their digests; the numbers are data, which nothing runs.
void PageWriter::addHead(const Page& page) {
    html += fmt::format(
        "<!DOCTYPE html>\n<html lang=\"{}\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src {}; "
        "script-src {}; base-uri 'none'; form-action 'none'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta name=\"color-scheme\" content=\"light dark\">\n"
        "<title>{}</title>\n<style>{}</style>\n</head>\n<body>\n<main>\n<h1>{}</h1>\n",
        said(PageText::language), policySource(textOf(pageStyle)), policySource(textOf(pageScript)),
        title(page, "", ""), textOf(pageStyle), title(page, "<bdi>", "</bdi>"));
}

std::string PageWriter::cell(const PageCell& cell) const {
    std::string text = htmlText(cell.text);
    switch (cell.kind) {
        case PageCell::Kind::label:
            return said(cell.label);
        case PageCell::Kind::sentence:
            return language == PageLanguage::english ? text
                                                     : "<span lang=\"en\">" + text + "</span>";
        case PageCell::Kind::name:
            return "<bdi>" + text + "</bdi>";
        case PageCell::Kind::code:
            return "<code>" + text + "</code>";
        default:
            return text;
    }
}

// A line is not broken within an option.
static std::string commandLine(const std::string& html) {
    std::string line;
    bool inOption = false;
    for (std::size_t i = 0; i < html.size(); ++i) {
        if (html[i] == ' ' && inOption) {
            line += "</span>";
            inOption = false;
        }
        if (html[i] == '-' && !inOption && i > 0 && html[i - 1] == ' ') {
            line += "<span>";
            inOption = true;
        }
        line += html[i];
    }
    return line + (inOption ? "</span>" : "");
}

// Sentences are a list; a label leads to what follows it.
void PageWriter::addLines(const std::vector<PageCell>& lines) {
    bool inList = false;
    for (const PageCell& line : lines) {
        const bool listed = line.kind == PageCell::Kind::sentence;
        if (listed != inList) {
            html += listed ? "<ul>\n" : "</ul>\n";
            inList = listed;
        }
        if (line.kind == PageCell::Kind::code) {
            html += "<pre>" + commandLine(cell(line)) + "</pre>\n";
        } else {
            html += fmt::format("<{0}>{1}</{0}>\n", listed ? "li" : "p", cell(line));
        }
    }
    html += inList ? "</ul>\n" : "";
}

void PageWriter::addRow(const PageRow& row, bool heads) {
    html += "<tr>";
    for (std::size_t i = 0; i < row.size(); ++i) {
        const bool head = heads || i == 0;
        const char* const kind = row[i].kind == PageCell::Kind::number ? " class=\"number\"" : "";
        const char* const scope = !head ? "" : heads ? " scope=\"col\"" : " scope=\"row\"";
        html += fmt::format("<{0}{1}{2}>{3}</{0}>", head ? "th" : "td", scope, kind, cell(row[i]));
    }
    html += "</tr>\n";
}

// Beyond so many rows nobody reads.
static constexpr std::size_t mostRows = 200;

void PageWriter::addTable(const PageTable& table) {
    html += fmt::format("<div class=\"wide\"><table{}>\n",
                        table.heads.empty() ? " class=\"facts\"" : "");
    if (!table.heads.empty()) {
        html += "<thead>\n";
        addRow(table.heads, true);
        html += "</thead>\n";
    }
    html += "<tbody>\n";
    const std::size_t shown = std::min(table.rows.size(), mostRows);
    for (std::size_t i = 0; i < shown; ++i) {
        addRow(table.rows[i], false);
    }
    html += "</tbody>\n</table></div>\n";
    if (shown < table.rows.size()) {
        html += "<p>" + fmt::format(fmt::runtime(said(PageText::more)), table.rows.size() - shown) +
                "</p>\n";
    }
}

void PageWriter::addSection(const PageSection& section) {
    html += fmt::format("<section{}>\n<h2>{}</h2>\n", section.warns ? " class=\"warning\"" : "",
                        said(section.title));
    if (section.note) {
        html += "<p>" + said(*section.note) + "</p>\n";
    }
    addLines(section.lines);
    for (const PageTable& table : section.tables) {
        addTable(table);
    }
    html += "</section>\n";
}

// The element alone, without the head of a file, and without the title that it has as a file: it
// would show wherever one points at the picture.
static std::string svgElement(const std::string& file) {
    static constexpr std::string_view start = "<title>", end = "</title>";
    const std::size_t first = std::min(file.find("<svg"), file.size());
    std::string element = file.substr(first, file.rfind('>') + 1 - first);
    const std::size_t title = element.find(start), rest = element.find(end);
    if (title < rest && rest != std::string::npos) {
        element.erase(title, rest + end.size() - title);
    }
    return element;
}

void PageWriter::addPicture(const Figure& figure, const PaintedFigure& painted) {
    html += fmt::format(
        "<section class=\"pictures\">\n<h2>{}</h2>\n<p id=\"hint\" hidden>{}</p>\n<figure "
        "lang=\"en\">\n<div id=\"picture\" role=\"group\" aria-label=\"{}\">\n{}\n<div "
        "id=\"readout\" role=\"status\" hidden></div>\n</div>\n",
        said(PageText::pictures), said(PageText::pointer), said(PageText::pictures),
        svgElement(painted.bytes));
    html += figure.caption.empty() ? "" : "<figcaption>\n";
    for (const std::string& line : figure.caption) {
        html += "<p>" + htmlText(line) + "</p>\n";
    }
    html += figure.caption.empty() ? "" : "</figcaption>\n";
    html += "</figure>\n</section>\n";
}

void PageWriter::addEnd(const Figure& figure, const PaintedFigure& painted) {
    html += fmt::format(
        "</main>\n<footer><p>{}</p></footer>\n<script type=\"application/json\" "
        "id=\"numbers\">{}</script>\n<script>{}</script>\n</body>\n</html>\n",
        said(PageText::complete), scriptData(paneNumbers(figure, painted)), textOf(pageScript));
}

std::string htmlOf(const Page& page, const Figure& figure, const PaintedFigure& painted,
                   PageLanguage language) {
    PageWriter writer(language);
    writer.addHead(page);
    const auto add = [&](bool warning) {
        for (const PageSection& section : page.sections) {
            if (section.warns == warning) {
                writer.addSection(section);
            }
        }
    };
    add(true);
    writer.addPicture(figure, painted);
    add(false);
    writer.addEnd(figure, painted);
    return std::move(writer.html);
}

// In 900 by 1060 the text is of a size to be read on A4, below the title of the page.
PictureOrder pageOrder(const Figure& figure) {
    const int panes = std::max(1, static_cast<int>(figure.panes.size()));
    return {PictureFormat::svg, 900, std::min(1060, 40 + 260 * panes), {}, {}};
}
