#include "platform/userLanguage.h"

#include <windows.h>

// The low ten bits of a language's number are the language, the rest its country.
unsigned systemLanguage() {
    switch (PRIMARYLANGID(GetUserDefaultUILanguage())) {
        case LANG_GERMAN:
            return languageGerman;
        case LANG_FRENCH:
            return languageFrench;
        default:
            return languageEnglish;
    }
}
