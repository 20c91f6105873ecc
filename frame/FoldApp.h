#pragma once

#include "platform/CWinApp.h"

// The application object of the library.
class FoldApp : public CWinApp {
public:
    FoldApp() : CWinApp(nullptr) {}
};
