#include "workbench/commands/PlotOptions.h"

#include "workbench/signals/SourceName.h"
#include "workbench/system/offer.h"
#include "workbench/terminal/help.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <tuple>
#include <utility>

PlotFile::PlotFile(const std::string& file, bool replace)
    : output(SourceName::ofOutput(file), replace) {}

void PlotFile::write(const Figure& figure, const PictureOrder& order) {
    output.write(window.paint(figure, order).bytes);
    output.commit();
}

// Width and height; none where the word is not two numbers of pixels.
static std::optional<std::pair<int, int>> sizeOf(const std::string& word) {
    constexpr int least = 200, most = 10000;
    int sides[2] = {0, 0};
    const char *from = word.data(), *const end = from + word.size();
    for (int i = 0; i < 2; ++i) {
        const auto [rest, error] = std::from_chars(from, end, sides[i]);
        const bool follows = i == 0 ? rest != end && *rest == 'x' : rest == end;
        if (error != std::errc() || !follows || sides[i] < least || sides[i] > most) {
            return std::nullopt;
        }
        from = rest + 1;
    }
    return std::pair(sides[0], sides[1]);
}

static CLI::Validator pictureName() {
    const auto check = [](const std::string& name) -> std::string {
        return pictureFormatOf(name)
                   ? ""
                   : fmt::format(
                         "\"{}\" is not the name of a picture; give one that ends in "
                         ".png, .svg or .pdf",
                         name);
    };
    return {check, ""};
}

static CLI::Validator pictureSize() {
    const auto check = [](const std::string& word) -> std::string {
        return sizeOf(word) ? ""
                            : fmt::format(
                                  "\"{}\" is not a size; give WIDTHxHEIGHT in pixels, each "
                                  "from 200 to 10000, as in 1200x900",
                                  word);
    };
    return {check, ""};
}

static void addLooks(CLI::App& command, PlotOptions& options, CLI::Option* needed) {
    CLI::Option* const all[] = {
        command
            .add_option("--size", options.size,
                        "of the picture, in pixels or 1/96 inch; default: 1200 by what its panes "
                        "take")
            ->check(pictureSize())
            ->type_name("WxH"),
        command
            .add_option("--from", options.from, "where the picture starts, in units of the axis")
            ->type_name("X"),
        command.add_option("--to", options.to, "where the picture ends")->type_name("X")};
    for (CLI::Option* const option : all) {
        option->group(groupWhere(Offer::here.windows, "Picture"));
        if (needed != nullptr) {
            option->needs(needed);
        }
    }
}

void PlotOptions::addTo(CLI::App& command) {
    CLI::Option* const plot =
        command
            .add_option("--plot", file,
                        "paint signals, result, residual and spectra into a picture; its ending is "
                        ".png, .svg or .pdf")
            ->check(pictureName())
            ->type_name("FILE")
            ->group(groupWhere(Offer::here.windows, "Picture"));
    addLooks(command, *this, plot);
}

void PlotOptions::addAsOutputTo(CLI::App& command) {
    command.add_option("-o,--output", file, "the picture; its ending is .png, .svg or .pdf")
        ->required()
        ->check(pictureName())
        ->type_name("FILE");
    addLooks(command, *this, nullptr);
}

std::unique_ptr<PlotFile> PlotOptions::open(bool replace) const {
    if (from && to && *from >= *to) {
        throw CLI::ValidationError(
            "--from",
            fmt::format("{} is not below {}, which --to is; give the lower end first", *from, *to));
    }
    return file.empty() ? nullptr : std::make_unique<PlotFile>(file, replace);
}

PictureOrder PlotOptions::order(const Figure& figure) const {
    constexpr int paneHeight = 240, lineHeight = 18, most = 10000;
    PictureOrder order;
    order.format = pictureFormatOf(file).value_or(PictureFormat::png);
    order.height = std::min(most, paneHeight * static_cast<int>(figure.panes.size()) +
                                      lineHeight * static_cast<int>(figure.caption.size()) + 60);
    if (const auto given = sizeOf(size)) {
        std::tie(order.width, order.height) = *given;
    }
    order.from = from;
    order.to = to;
    return order;
}
