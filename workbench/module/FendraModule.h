#pragma once

#include "workbench/methods/FendraSettings.h"

class B_BasisModule;
class ModuleLibrary;

// Fendra's own record of settings, which no other module understands. Of each operation:
//   Failure   the module does not call itself Fendra, in the version whose record this is. It is
//             as it was.

// Sets the module up, the way a host does: through a stored graph that it reads.
void applySettings(const FendraSettings& settings, B_BasisModule& module);

// The settings of a module, read from what it stores.
FendraSettings settingsOf(B_BasisModule& module);

// Asks this alone, before a file is loaded that only Fendra is to see.
void requireFendra(const B_BasisModule& module);
// Of a library, before its modules run.
void requireFendra(const ModuleLibrary& library);

// Whether a module is the one whose settings these are.
bool isFendra(const B_BasisModule& module);
