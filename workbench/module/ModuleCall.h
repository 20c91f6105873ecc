#pragma once

#include "workbench/methods/FendraSettings.h"

#include <string>
#include <vector>

class ModuleLibrary;

// What a module makes of two signals.
struct ModuleAnswer {
    std::vector<double> samples;           // as many as the longer signal has
    std::vector<double> numbers;           // that it reports; empty: none
    std::vector<std::string> numberNames;  // in the user's language
};

// Runs a module of its own on two whole signals, each as one block. Failure as ModuleDriver and
// applySettings, and if a signal is longer than a module takes.
ModuleAnswer callModule(const ModuleLibrary& library, const FendraSettings& settings,
                        const std::vector<double>& first, const std::vector<double>& second);
