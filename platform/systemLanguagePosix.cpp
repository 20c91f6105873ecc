#include "platform/userLanguage.h"

// The environment variables are all there is.
unsigned systemLanguage() {
    return languageEnglish;
}
