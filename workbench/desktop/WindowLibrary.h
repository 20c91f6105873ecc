#pragma once

#include "platform/Desktop.h"
#include "workbench/desktop/windowExports.h"
#include "workbench/figures/Figure.h"
#include "workbench/figures/Picture.h"
#include "workbench/system/SharedLibrary.h"

#include <memory>
#include <string>

// fendra-window.so, which lies beside the program: windows and pictures, and Qt with them. It is
// loaded where they are wanted and nowhere else; the program itself does not need it.
class WindowLibrary {
public:
    // Failure if it is not there, or Qt is not.
    WindowLibrary();

    // Failure if there is no display: a better reason than that the library is missing.
    static void requireDisplay();

    // The desktops of windowExports.h. They end before the library does.
    // Failure if no font is installed; windowDesktop: also if there is no display.
    //   subject   added to the titles of dialogs, UTF-8 and printable; empty: nothing
    [[nodiscard]] std::unique_ptr<Desktop> windowDesktop(const std::string& subject = {}) const;
    [[nodiscard]] std::unique_ptr<Desktop> pictureDesktop(const std::string& file) const;

    // Opens the window in which one works, and returns the status for the process.
    [[nodiscard]] int openWindow(FoldBench& bench, const WindowOrder& order) const;

    // Failure as paintFigure.
    [[nodiscard]] PaintedFigure paint(const Figure& figure, const PictureOrder& order) const;

private:
    SharedLibrary library;
};
