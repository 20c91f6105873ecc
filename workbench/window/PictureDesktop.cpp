#include "workbench/window/PictureDesktop.h"

#include "platform/DialogResource.h"
#include "workbench/messages/Failure.h"
#include "workbench/window/DialogWindow.h"
#include "workbench/window/text.h"

#include <QImage>
#include <QSaveFile>

#include <iostream>
#include <utility>

// Qt's platform without a screen, chosen before Qt starts.
static QString offScreen(QString file) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return file;
}

PictureDesktop::PictureDesktop(QString pictureFile) : file(offScreen(std::move(pictureFile))) {}

int PictureDesktop::messageBox(const CString& text, const CString& caption, unsigned /*style*/) {
    std::cerr << toUtf8(caption + ": " + text + "\n");
    return IDOK;
}

void PictureDesktop::runDialog(CDialog& dialog) {
    constexpr int pixelsPerPixel = 2;  // sharp where screens have small pixels
    DialogWindow window(dialog, {}, nullptr);
    QImage picture(window.size() * pixelsPerPixel, QImage::Format_RGB32);
    picture.setDevicePixelRatio(pixelsPerPixel);
    window.render(&picture);

    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || !picture.save(&target, "PNG") || !target.commit()) {
        throw Failure(QString("%1: the picture cannot be written (%2); name another file")
                          .arg(file, target.errorString())
                          .toStdString());
    }
}
