#include "workbench/commands/PageOptions.h"

#include "platform/userLanguage.h"
#include "workbench/signals/SourceName.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/help.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

static PageLanguage pageLanguage() {
    switch (userLanguage()) {
        case languageGerman:
            return PageLanguage::german;
        case languageFrench:
            return PageLanguage::french;
        default:
            return PageLanguage::english;
    }
}

PageFile::PageFile(const std::string& file, bool replace)
    : language(pageLanguage()), output(SourceName::ofOutput(file), replace) {}

// What stands below the panes is text of the page.
void PageFile::write(const Page& page, const Figure& figure) {
    Figure panes = figure;
    panes.caption.clear();
    const PaintedFigure painted = window.paint(panes, pageOrder(panes));
    output.write(htmlOf(page, figure, painted, language));
    output.commit();
}

void PageOptions::addTo(CLI::App& command) {
    const auto check = [](const std::string& name) -> std::string {
        const std::string ending = lowerCaseEnding(name);
        return ending == ".html" || ending == ".htm"
                   ? ""
                   : fmt::format("\"{}\" is not the name of a page; give one that ends in .html",
                                 name);
    };
    command
        .add_option(
            "--page", file,
            "write one page, FILE.html, to send to a colleague: pictures with the values under "
            "the pointer, what was chosen and why, remarks, settings, digests and the "
            "command line that gives the same again")
        ->check(CLI::Validator(check, ""))
        ->type_name("FILE")
        ->group(groupWhere(Offer::here.windows, "Result"));
}

std::unique_ptr<PageFile> PageOptions::open(bool replace) const {
    return file.empty() ? nullptr : std::make_unique<PageFile>(file, replace);
}
