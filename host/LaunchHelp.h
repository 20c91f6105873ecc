#pragma once

#include "platform/CString.h"

#include <functional>

using HelpLauncher = std::function<void(const CString& helpFile, const CString& key)>;

// Opens the page key of a help file through the process's launcher.
void LaunchHelp(const CString& helpFile, const CString& key);

// Installs the process's launcher, an empty one for the default: a line on standard error, in
// UTF-8, that names the page. Returns the one before. Not guarded: install while no module runs in
// another thread.
HelpLauncher installHelpLauncher(HelpLauncher launcher);
