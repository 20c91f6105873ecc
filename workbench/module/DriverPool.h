#pragma once

#include "workbench/methods/FendraSettings.h"
#include "workbench/module/ModuleDriver.h"
#include "workbench/module/ModuleLibrary.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

// Modules with the same settings, each with a driver: as many as run at once.
class DriverPool {
public:
    // The library stays the caller's. Makes one module; Failure as applySettings and ModuleDriver.
    DriverPool(const ModuleLibrary& moduleLibrary, const FendraSettings& moduleSettings);

    // Calls with a driver that nobody else uses meanwhile, from any thread. After a call that
    // throws the module is not used again: what has stayed in its streams is not known.
    void use(const std::function<void(ModuleDriver&)>& call);

    // As those of ModuleDriver.
    [[nodiscard]] const std::vector<std::string>& numberNames() const { return names; }

private:
    struct Driven {
        explicit Driven(ModuleObject made) : module(std::move(made)), driver(*module) {}

        ModuleObject module;
        ModuleDriver driver;
    };

    [[nodiscard]] std::unique_ptr<Driven> make() const;
    std::unique_ptr<Driven> takeIdle();

    const ModuleLibrary& library;
    FendraSettings settings;
    std::vector<std::string> names;
    std::mutex guard;  // of what follows
    std::vector<std::unique_ptr<Driven>> idle;
};
