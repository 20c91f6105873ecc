#include "platform/userLanguage.h"

#include <cstdlib>
#include <string_view>

unsigned userLanguage() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(variable);
        const std::string_view locale = value != nullptr ? value : "";
        if (!locale.empty()) {
            return locale.starts_with("de")   ? languageGerman
                   : locale.starts_with("fr") ? languageFrench
                                              : languageEnglish;
        }
    }
    return systemLanguage();
}
