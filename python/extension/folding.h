#pragma once

#include <pybind11/pybind11.h>

// Each adds classes and functions to the module: what works on two signals, and what reads, writes
// and makes signals.
void addFolding(pybind11::module_& module);
void addSignals(pybind11::module_& module);
