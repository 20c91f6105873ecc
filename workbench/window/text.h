#pragma once

#include "platform/CString.h"
#include "platform/Windows1252.h"

#include <QString>

// Texts of the framework are in Windows-1252, those of Qt in UTF-16.
inline QString toQt(const CString& text) {
    return QString::fromStdString(toUtf8(text));
}

inline CString fromQt(const QString& text) {
    return fromUtf8(text.toStdString());
}
