#include "workbench/desktop/WindowLibrary.h"

#include "workbench/desktop/display.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"
#include "workbench/system/offer.h"

#include <fmt/format.h>

static void requireSystem() {
    if (!Offer::here.windows) {
        throw Failure("there are no windows and pictures of fendra on this system, only on Linux");
    }
}

static SharedLibrary loadWindow() {
    requireSystem();
    const std::filesystem::path file = SharedLibrary::ownFile("fendra-window");
    if (!std::filesystem::is_regular_file(file)) {
        throw Failure(fmt::format(
            "{} does not exist, which paints pictures and opens windows; install the package "
            "fendra-window, or qt6-base-dev, qt6-svg-dev, qt6-l10n-tools and libqcustomplot-dev "
            "and build fendra again",
            printable(nameOf(file))));
    }
    try {
        return SharedLibrary(file);
    } catch (const Failure& reason) {
        throw Failure(
            fmt::format("{} cannot be loaded ({}); install libqcustomplot2.1-qt6 and "
                        "libqt6svg6",
                        printable(nameOf(file)), reason.what()));
    }
}

void WindowLibrary::requireDisplay() {
    requireSystem();
    if (!displayAvailable()) {
        throw Failure("there is no display to open a window on");
    }
}

WindowLibrary::WindowLibrary() : library(loadWindow()) {}

std::unique_ptr<Desktop> WindowLibrary::windowDesktop(const std::string& subject) const {
    requireDisplay();
    const auto make =
        reinterpret_cast<decltype(&makeWindowDesktop)>(library.symbol("makeWindowDesktop"));
    return std::unique_ptr<Desktop>(make(subject.c_str()));
}

std::unique_ptr<Desktop> WindowLibrary::pictureDesktop(const std::string& file) const {
    const auto make =
        reinterpret_cast<decltype(&makePictureDesktop)>(library.symbol("makePictureDesktop"));
    return std::unique_ptr<Desktop>(make(file.c_str()));
}

int WindowLibrary::openWindow(FoldBench& bench, const WindowOrder& order) const {
    const auto open = reinterpret_cast<decltype(&::openWindow)>(library.symbol("openWindow"));
    return open(bench, order);
}

PaintedFigure WindowLibrary::paint(const Figure& figure, const PictureOrder& order) const {
    const auto paint = reinterpret_cast<decltype(&paintFigure)>(library.symbol("paintFigure"));
    PaintedFigure painted;
    paint(figure, order, painted);
    return painted;
}
