#pragma once

// Sets a variable of the process's environment; an empty value counts as none.
void setVariable(const char* name, const char* value);
