#include "workbench/module/DriverPool.h"

#include "host/B_BasisModule.h"
#include "workbench/module/FendraModule.h"

#include <utility>

DriverPool::DriverPool(const ModuleLibrary& moduleLibrary, const FendraSettings& moduleSettings)
    : library(moduleLibrary), settings(moduleSettings) {
    idle.push_back(make());
    names = idle.back()->driver.numberNames();
}

std::unique_ptr<DriverPool::Driven> DriverPool::make() const {
    ModuleObject module = library.makeModule();
    applySettings(settings, *module);
    return std::make_unique<Driven>(std::move(module));
}

// None: all are in use.
std::unique_ptr<DriverPool::Driven> DriverPool::takeIdle() {
    const std::lock_guard lock(guard);
    if (idle.empty()) {
        return nullptr;
    }
    std::unique_ptr<Driven> driven = std::move(idle.back());
    idle.pop_back();
    return driven;
}

void DriverPool::use(const std::function<void(ModuleDriver&)>& call) {
    std::unique_ptr<Driven> driven = takeIdle();
    if (!driven) {
        driven = make();
    }
    call(driven->driver);
    const std::lock_guard lock(guard);
    idle.push_back(std::move(driven));
}
