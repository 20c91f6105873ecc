#pragma once

class Desktop;

// What fendra-window.so exports: desktops for the program to install. All of Qt lies behind them.
// A desktop holds the process's connection to the screen, so there is one at a time. The caller
// deletes it. Failure if no font is installed.
extern "C" {

// Shows dialogs and messages in windows, and the module's help beside them. To be asked for only
// where displayAvailable; a display that cannot be reached ends the process, with one line on
// standard error and status 1. What a dialog's handler throws leaves by runDialog.
[[gnu::visibility("default")]] Desktop* makeWindowDesktop();

// Needs no display. runDialog paints the dialog into a PNG file, which it replaces only when wholly
// written, and answers nothing; Failure if the file cannot be written. Messages go to standard
// error.
[[gnu::visibility("default")]] Desktop* makePictureDesktop(const char* file);
}
