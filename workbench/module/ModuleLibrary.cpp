#include "workbench/module/ModuleLibrary.h"

#include "host/B_BasisModule.h"
#include "platform/ResourceChain.h"
#include "platform/Windows1252.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <cstddef>
#include <utility>

std::string moduleName(const B_BasisModule& module) {
    return printable(toUtf8(module.moduleName));
}

std::string moduleVersion(const B_BasisModule& module) {
    return printable(toUtf8(module.moduleVersion));
}

// The loader's own message on a file that does not exist would be long and unclear.
static SharedLibrary loadModule(const std::filesystem::path& file) {
    if (!std::filesystem::is_regular_file(file)) {
        throw Failure(fmt::format("{}: no such module file; name one with --module",
                                  printable(nameOf(file))));
    }
    try {
        return SharedLibrary(file);
    } catch (const Failure& reason) {
        throw Failure(
            fmt::format("{} is not a module that can be loaded ({}); name one with --module",
                        printable(nameOf(file)), reason.what()));
    }
}

ModuleLibrary::ModuleLibrary(std::filesystem::path libraryFile)
    : file(std::move(libraryFile)), library(loadModule(file)) {
    // All of them, so that a library is refused at once and not in the middle of a run.
    for (const char* name : exportNames) {
        if (library.symbol(name) == nullptr) {
            throw Failure(fmt::format("{} is not a module: it lacks the export {}",
                                      printable(nameOf(file)), name));
        }
    }
    if (function<int()>("InitDLL")() != 1) {
        throw Failure(fmt::format("{} refuses to start (InitDLL)", printable(nameOf(file))));
    }
}

std::filesystem::path ModuleLibrary::standardFile() {
    return SharedLibrary::ownFile("fendra");
}

template <typename Function>
Function* ModuleLibrary::function(const char* name) const {
    return reinterpret_cast<Function*>(library.symbol(name));
}

ModuleObject ModuleLibrary::makeModule() const {
    B_BasisModule* module = function<B_BasisModule*()>("GetModuleInstance")();
    if (module == nullptr) {
        throw Failure(fmt::format("{} makes no module (GetModuleInstance gave null)",
                                  printable(nameOf(file))));
    }
    return {module, function<void(B_BasisModule*)>("DeleteModuleInstance")};
}

const ModuleLibrary::Identity& ModuleLibrary::identity() const {
    std::call_once(identified, [this] {
        const ModuleObject module = makeModule();
        known = {moduleName(*module), moduleVersion(*module)};
    });
    return known;
}

unsigned ModuleLibrary::labelId() const {
    return function<unsigned()>("GetBitmapStringResource")();
}

unsigned ModuleLibrary::bitmapId() const {
    return function<unsigned()>("GetBitmapID")();
}

std::string ModuleLibrary::label() const {
    return toUtf8(ResourceChain::string(labelId()));
}

std::string ModuleLibrary::longLabel() const {
    return label().substr(0, label().find('\n'));
}

std::string ModuleLibrary::shortLabel() const {
    const std::string text = label();
    const std::size_t lineFeed = text.find('\n');
    return lineFeed == std::string::npos ? text : text.substr(lineFeed + 1);
}
