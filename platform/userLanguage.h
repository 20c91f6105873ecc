#pragma once

// Languages have the numbers of the window system.
constexpr unsigned languageGerman = 1031;
constexpr unsigned languageEnglish = 1033;
constexpr unsigned languageFrench = 1036;

// Language of the user: by the beginning, de or fr, of the first of the environment variables
// LC_ALL, LC_MESSAGES and LANG that is set and not empty; English for any other beginning. If none
// is set it is the language of the system's own windows, English for any other than the three. Read
// on each call.
unsigned userLanguage();

// Language of the windows of the system; English where it has none of its own. Each system has its
// source: systemLanguage<System>.cpp.
unsigned systemLanguage();
