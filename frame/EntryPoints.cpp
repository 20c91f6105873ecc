#include "frame/EntryPoints.h"

#include "frame/FoldModule.h"
#include "platform/ResourceChain.h"
#include "resources/resources.h"

#include <new>

// In the resource chain while the library is loaded.
static const ResourceLibrary library(moduleStrings, moduleBitmaps, moduleIcons, moduleDialogs);

FoldApp theApp;

B_BasisModule* GetModuleInstance() {
    try {
        return new FoldModule;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void DeleteModuleInstance(B_BasisModule* module) {
    delete static_cast<FoldModule*>(module);
}

int InitDLL() {
    return 1;
}

unsigned GetBitmapID() {
    return bitmapModule;
}

unsigned GetBitmapStringResource() {
    return stringModuleLabel;
}

int IsDebug() {
    return 0;
}

const char* GetCID() {
    return "";
}
