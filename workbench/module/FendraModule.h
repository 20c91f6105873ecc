#pragma once

#include "workbench/methods/FendraSettings.h"

class B_BasisModule;

// Sets a module up with settings, the way a host does: through a stored graph that it reads.
void applySettings(const FendraSettings& settings, B_BasisModule& module);

// Those of a module, read from what it stores.
FendraSettings settingsOf(B_BasisModule& module);
