#pragma once

#include "frame/EntryPoints.h"
#include "host/B_BasisModule.h"
#include "platform/CArchiveException.h"

#include <memory>
#include <sstream>
#include <string>

struct ModuleDeleter {
    void operator()(B_BasisModule* module) const { DeleteModuleInstance(module); }
};
using ModuleHandle = std::unique_ptr<B_BasisModule, ModuleDeleter>;

inline ModuleHandle makeModule() {
    return ModuleHandle(GetModuleInstance());
}

// The bytes that a module stores.
inline std::string stored(B_BasisModule& module) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    module.Serialize(archive);
    return stream.str();
}

// Whether a module takes the bytes; if not, it leaves by an archive exception and by no other.
inline bool loads(B_BasisModule& module, const std::string& bytes) {
    std::istringstream stream(bytes);
    CArchive archive(stream, CArchive::load);
    try {
        module.Serialize(archive);
        return true;
    } catch (const CArchiveException&) {
        return false;
    }
}
