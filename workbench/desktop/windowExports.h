#pragma once

class Desktop;

// What fendra-window.so exports: desktops for the program to install. All of Qt is in there.
// A desktop holds the process's connection to the screen, so there is one at a time. The caller
// deletes it. Failure if no font is installed.
extern "C" {

// Shows dialogs and messages in windows, and the module's help beside them. To be called only where
// displayAvailable; a display that cannot be reached ends the process, with one line on standard
// error and status 1. What a dialog's handler throws leaves by runDialog.
//   subject   UTF-8: what the dialogs are about, a file for instance. Their titles become
//             "title - subject"; empty or null: "title"
[[gnu::visibility("default")]] Desktop* makeWindowDesktop(const char* subject);

// Needs no display. runDialog paints the dialog into a PNG file, which is replaced only once the
// new one is complete, and leaves the dialog unanswered; Failure if the file cannot be written.
// Messages go to standard error. The name of the file is UTF-8.
[[gnu::visibility("default")]] Desktop* makePictureDesktop(const char* file);
}
