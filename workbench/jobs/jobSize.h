#pragma once

#include "workbench/jobs/JobObserver.h"
#include "workbench/methods/FendraSettings.h"

class ModuleRun;
struct Method;

// What a run by a method takes, at most.
JobSize sizeOf(const Method& method, const FendraSettings& settings, const ModuleRun& moduleRun);

// Failure if the method needs more memory than is free.
void checkMemory(const Method& method, const ModuleRun& moduleRun);
