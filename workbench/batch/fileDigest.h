#pragma once

#include <string>

// SHA-256 of the bytes of a file, or of that of a name FILE:NAME, as 64 lower-case hexadecimal
// digits. Failure if it cannot be read, or is not an ordinary file.
std::string fileDigest(const std::string& file);
