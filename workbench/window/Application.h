#pragma once

#include <QApplication>
#include <QTranslator>

// Qt's application object, as this program wants it: windows that look the same on every system and
// speak the user's language, numbers with a decimal point, and one line where no window can be
// opened.
class Application {
public:
    // Failure if there is no font. Ends the process if the display cannot be reached.
    Application();

private:
    // Qt keeps references to both.
    int argumentCount = 1;
    char programName[7] = "fendra";
    char* arguments[2] = {programName, nullptr};

    QApplication application;
    QTranslator translator;  // of Qt's own texts: menus of edits and pages
};
