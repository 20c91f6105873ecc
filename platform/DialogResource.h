#pragma once

#include <span>

// Ids of the buttons that a dialog ends by, and its answer then.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;

enum class ControlKind {
    frame,          // a box with a title, around controls that belong together
    label,          // text; its mnemonic goes to the next control that takes the focus
    line,           // sunken, across the dialog
    radio,          // a click checks it and unchecks the others of its group
    checkBox,       // a click checks or unchecks it
    edit,           // one line of text, which scrolls sideways
    dropDown,       // a list, of which one entry is chosen
    defaultButton,  // what the Enter key presses
    helpButton,     // what the F1 key presses
    button
};

// One control of a template. Places and sizes are dialog units: a quarter of the mean width of the
// font's characters across, an eighth of their height down.
struct ControlResource {
    unsigned id;  // 0: none
    ControlKind kind;
    bool startsGroup;  // a group runs up to the next control that starts one
    int x, y, width, height;
    const char* text;  // UTF-8; & stands before the mnemonic, a line feed breaks the line
};

// An entry of a drop-down list. They stand in the order of the list.
struct ListEntryResource {
    unsigned controlId;
    const char* text;  // UTF-8
};

// A dialog in one language: its template and the data of its lists. Controls stand in tab order.
struct DialogResource {
    unsigned id;
    unsigned language;
    int width, height;  // of the area within the border, in dialog units
    const char* title;  // UTF-8
    const char* fontName;
    int fontPoints;
    std::span<const ControlResource> controls;
    std::span<const ListEntryResource> listEntries;
};
