#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

// What a program said, and how it ended.
struct ProgramEnd {
    int status = 0;  // 128 and the signal, where one ended it
    std::string output, errors;
};

// Runs a program, which is looked for as the shell does, and waits for its end. Its words arrive as
// they are: no shell reads them. input: on its standard input.
// Failure if it cannot be started.
ProgramEnd runProgram(const std::vector<std::string>& words, const std::string& input);

// The same with open files as its standard input, from its beginning, and output.
ProgramEnd runProgram(const std::vector<std::string>& words, std::FILE* input, std::FILE* output);

// The file of this program.
std::filesystem::path programFile();
