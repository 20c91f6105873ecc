#include "workbench/window/PlainEnvironment.h"

#include <QHashFunctions>
#include <QProcessEnvironment>
#include <QtGlobal>

#include <algorithm>

// Of Qt, its fonts, the desktop and the locale.
static bool isAboutLooks(const QString& name) {
    const char* const beginnings[] = {"QT_",     "QML", "FONTCONFIG_", "FC_", "FREETYPE_", "XDG_",
                                      "DESKTOP", "GTK", "KDE",         "LC_", "GNOME"};
    return std::any_of(
        std::begin(beginnings), std::end(beginnings),
        [&name](const char* beginning) { return name.startsWith(QLatin1String(beginning)); });
}

// The fonts of a PDF stand in the order of their hashes.
PlainEnvironment::PlainEnvironment() {
    QHashSeed::setDeterministicGlobalSeed();
    for (const QString& name : QProcessEnvironment::systemEnvironment().keys()) {
        if (isAboutLooks(name)) {
            set(name.toLocal8Bit().constData(), nullptr);
        }
    }
    set("QT_QPA_PLATFORM", "offscreen");
    set("LC_ALL", "C.UTF-8");
    set("LANG", nullptr);
    set("LANGUAGE", nullptr);
    set("HOME", "/nonexistent");
    set("TZ", "UTC");
}

void PlainEnvironment::set(const char* name, const char* value) {
    before.emplace_back(name, qEnvironmentVariableIsSet(name) ? qgetenv(name) + "" : QByteArray());
    if (value != nullptr) {
        qputenv(name, value);
    } else {
        qunsetenv(name);
    }
}

// Backwards: some are set after they were taken away.
PlainEnvironment::~PlainEnvironment() {
    std::for_each(before.rbegin(), before.rend(), [](const auto& variable) {
        const auto& [name, value] = variable;
        if (value.isNull()) {
            qunsetenv(name.constData());
        } else {
            qputenv(name.constData(), value);
        }
    });
}
