#pragma once

#include "workbench/methods/FendraSettings.h"

#include <nlohmann/json_fwd.hpp>

// All settings by their keys, and of domain and method the one that the direction has. Given to
// --set they give the same settings again.
nlohmann::ordered_json settingsJson(const FendraSettings& settings);
