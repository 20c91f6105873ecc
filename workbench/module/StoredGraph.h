#pragma once

#include <string>

class B_BasisModule;

// A stored graph is a file that holds what one module's Serialize writes, and nothing else: a file
// with trailing data belongs to something else, and storing would lose the rest.

// Loads the file of that path, "-" for standard input, into a module.
//   Failure   it cannot be read, is of another version, is truncated or has trailing data, or names
//             a number of outputs that does not go with its settings. The module may hold half of
//             it then.
void loadGraph(B_BasisModule& module, const std::string& path);

// Writes the settings of a module beside the file of that path, and puts them in its place.
//   replace   The file may be there already.
//   Failure   it cannot be written, or is there; it stays as it was.
void storeGraph(B_BasisModule& module, const std::string& path, bool replace);
