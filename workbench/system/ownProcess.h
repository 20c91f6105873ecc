#pragma once

#include <string>

// For a program that another one runs on a file which may be broken.

// Sets limits on what it takes from now on: bytes of memory, beyond which there is none, and
// seconds of the processor, beyond which it is ended. It leaves no memory image where it breaks
// down, and ends with the program that runs it.
void limitProcess(double bytes, double seconds);

// Sets a variable of its environment.
void setOwnVariable(const char* name, const char* value);

// The path under which its standard output can be opened. What is printed from now on is lost.
std::string takeStandardOutput();
