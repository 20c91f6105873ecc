#include "workbench/desktop/windowExports.h"
#include "workbench/window/PictureDesktop.h"
#include "workbench/window/WindowDesktop.h"

Desktop* makeWindowDesktop(const char* subject) {
    return new WindowDesktop(QString::fromUtf8(subject));
}

Desktop* makePictureDesktop(const char* file) {
    return new PictureDesktop(QString::fromUtf8(file));
}
