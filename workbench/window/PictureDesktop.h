#pragma once

#include "platform/Desktop.h"
#include "workbench/window/Application.h"

#include <QString>

// Paints dialogs into a PNG file instead of showing them, without a display.
class PictureDesktop : public Desktop {
public:
    explicit PictureDesktop(QString pictureFile);

    int messageBox(const CString& text, const CString& caption, unsigned style) override;
    void runDialog(CDialog& dialog) override;

private:
    QString file;
    Application application;
};
