#include "tests/support/setVariable.h"

#include <cstdlib>

void setVariable(const char* name, const char* value) {
    ::_putenv_s(name, value);
}
