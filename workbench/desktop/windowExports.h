#pragma once

#include <string>

class Desktop;
class FoldBench;
struct Figure;
struct PaintedFigure;
struct PictureOrder;

// What a window opens with; empty: without it.
struct WindowOrder {
    std::string signal, kernel;  // UTF-8
    std::string colours;         // "light", "dark", or else those of the system
    std::string picture;         // PNG file that it is painted into, once a run has ended
};

// What fendra-window.so exports: desktops for the program to install, pictures, and the window in
// which one works. All of Qt is in there. There is one connection of the process to the screen, so
// one of the desktops, or the window, at a time.
extern "C" {

// Shows dialogs and messages in windows, and the module's help beside them. To be called only where
// displayAvailable; a display that cannot be reached ends the process, with one line on standard
// error and status 1. What a dialog's handler throws leaves by runDialog. The caller deletes it.
// Failure if no font is installed.
//   subject   UTF-8: what the dialogs are about, a file for instance. Their titles become
//             "title - subject"; empty or null: "title"
[[gnu::visibility("default")]] Desktop* makeWindowDesktop(const char* subject);

// Needs no display. runDialog paints the dialog into a PNG file, which is replaced only once the
// new one is complete, and leaves the dialog unanswered; Failure if the file cannot be written.
// Messages go to standard error. The name of the file is UTF-8.
[[gnu::visibility("default")]] Desktop* makePictureDesktop(const char* file);

// Needs no display. Paints a figure: the same bytes for the same figure and order, whatever the
// display, its scale, the locale, the time and its zone, the home and the folder. Failure if no
// font is installed, nothing of the figure is in the stretch of the order, or memory does not
// suffice.
[[gnu::visibility("default")]] void paintFigure(const Figure& figure, const PictureOrder& order,
                                                PaintedFigure& painted);

// Opens the window in which one works, and returns the process's status once it is closed. Failure
// and ends as makeWindowDesktop. With a picture no display is needed.
[[gnu::visibility("default")]] int openWindow(FoldBench& bench, const WindowOrder& order);
}
