#pragma once

#include "frame/FoldApp.h"

class B_BasisModule;

// What the library exports, under these plain names.
extern "C" {
// Makes a module object; null if memory is exhausted.
B_BasisModule* GetModuleInstance();

// Destroys an object that GetModuleInstance made; null is ignored. It is the only way to destroy
// one: the destructor is not virtual, and memory goes back to the library that gave it.
void DeleteModuleInstance(B_BasisModule* module);

int InitDLL();                       // 1: ready
unsigned GetBitmapID();              // picture under which a host offers the module
unsigned GetBitmapStringResource();  // label: long text, line feed, short name
int IsDebug();                       // 0
const char* GetCID();                // the empty string

extern FoldApp theApp;
}
