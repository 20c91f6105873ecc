#pragma once

#include "platform/Desktop.h"

class B_BasisModule;

// How a module's settings dialog ended.
enum class DialogEnd { notShown, dismissed, accepted };

// Has the module show its settings dialog on a desktop, which is installed for that time.
DialogEnd editSettings(B_BasisModule& module, Desktop& desktop);
