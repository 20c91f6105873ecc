#include "workbench/system/ownProcess.h"

// The programs that are run on files are those of Linux.
void limitProcess(double /*bytes*/, double /*seconds*/) {}

std::string takeStandardOutput() {
    return "CONOUT$";
}
