#pragma once

#include "workbench/system/SharedLibrary.h"

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

class B_BasisModule;

// A module object; it goes back to the library that made it. The library outlives it.
using ModuleObject = std::unique_ptr<B_BasisModule, std::function<void(B_BasisModule*)>>;

// How a module calls itself, and the version of what it stores; in UTF-8, printable.
std::string moduleName(const B_BasisModule& module);
std::string moduleVersion(const B_BasisModule& module);

// A plug-in library of the signal-graph host, loaded and checked, with what it exports.
class ModuleLibrary {
public:
    static constexpr std::array<const char*, 8> exportNames = {"GetModuleInstance",
                                                               "DeleteModuleInstance",
                                                               "InitDLL",
                                                               "GetBitmapID",
                                                               "GetBitmapStringResource",
                                                               "IsDebug",
                                                               "GetCID",
                                                               "theApp"};

    // Failure if there is no such file, it is no library, it lacks an export, or InitDLL refuses.
    explicit ModuleLibrary(std::filesystem::path libraryFile);

    // The module that came with the program, in its own folder.
    static std::filesystem::path standardFile();

    // Failure if the library makes none.
    [[nodiscard]] ModuleObject makeModule() const;

    // What a module of the library calls itself, and the version of what it stores. Failure as
    // makeModule.
    struct Identity {
        std::string name, version;
    };
    [[nodiscard]] const Identity& identity() const;

    // Long text and short name of the label under which a host offers the module, in UTF-8.
    [[nodiscard]] std::string longLabel() const;
    [[nodiscard]] std::string shortLabel() const;
    [[nodiscard]] unsigned labelId() const;
    [[nodiscard]] unsigned bitmapId() const;

    const std::filesystem::path file;

private:
    template <typename Function>
    [[nodiscard]] Function* function(const char* name) const;
    [[nodiscard]] std::string label() const;

    SharedLibrary library;
    mutable std::once_flag identified;
    mutable Identity known;
};
