#include "workbench/desktop/display.h"

#include <algorithm>
#include <array>
#include <cstdlib>

bool displayAvailable() {
    constexpr std::array variables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(variables.begin(), variables.end(), [](const char* variable) {
        const char* const value = std::getenv(variable);
        return value != nullptr && *value != '\0';
    });
}
