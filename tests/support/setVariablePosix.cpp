#include "tests/support/setVariable.h"

#include <cstdlib>

void setVariable(const char* name, const char* value) {
    ::setenv(name, value, 1);
}
