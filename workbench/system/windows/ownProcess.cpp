#include "workbench/system/ownProcess.h"

// The programs that are run on files are those of Linux.
void limitProcess(double /*bytes*/, double /*seconds*/) {}

void setOwnVariable(const char* /*name*/, const char* /*value*/) {}

std::string takeStandardOutput() {
    return "CONOUT$";
}
