#pragma once

#include <string>

// What a word of the command line names: a file, or a signal within one, after a colon:
// scope.csv:voltage, scope.csv:2, -:2. A file of the whole name goes before; else the file is the
// shortest beginning that names one. Drive letters are thus part of the file.
struct SourcePart {
    explicit SourcePart(const std::string& word);

    std::string file;
    std::string part;  // empty: none
};
