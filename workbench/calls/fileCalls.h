#pragma once

#include "workbench/calls/CallOptions.h"
#include "workbench/calls/CallSignal.h"
#include "workbench/signals/Signal.h"

#include <string>
#include <vector>

// Files for programs, as the command convert reads and writes them. Names of files are those of the
// command line: FILE:NAME is a signal within a file, - is standard input or output.

// The whole of a signal. WrongOption; Failure as openSignal; std::bad_alloc.
Signal readFile(const std::string& path, const CallOptions& options);

// Writes a signal in the format that the ending of the path stands for, and puts the file in its
// place once it is complete.
//   names     of the channels; none, or as many as there are
//   WrongOption; Failure as createSignal, and where samples are NaN or infinite, unless these are
//   allowed. Nothing is written then.
void writeFile(const std::string& path, const CallSignal& signal,
               const std::vector<std::string>& names, const CallOptions& options);
