#include "workbench/desktop/windowExports.h"
#include "workbench/window/PictureDesktop.h"
#include "workbench/window/WindowDesktop.h"

Desktop* makeWindowDesktop() {
    return new WindowDesktop;
}

Desktop* makePictureDesktop(const char* file) {
    return new PictureDesktop(QString::fromLocal8Bit(file));
}
