#include "host/LaunchHelp.h"

#include "platform/Windows1252.h"

#include <iostream>
#include <utility>

static HelpLauncher& installedLauncher() {
    static HelpLauncher launcher;
    return launcher;
}

void LaunchHelp(const CString& helpFile, const CString& key) {
    if (installedLauncher()) {
        installedLauncher()(helpFile, key);
        return;
    }
    std::cerr << toUtf8("help: page \"" + key + "\" of \"" + helpFile + "\"\n");
}

HelpLauncher installHelpLauncher(HelpLauncher launcher) {
    return std::exchange(installedLauncher(), std::move(launcher));
}
