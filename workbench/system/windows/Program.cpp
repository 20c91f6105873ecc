#include "workbench/system/Program.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <windows.h>

// The programs that are run are those of Slurm, and parts by libraries: both are for Linux.
ProgramEnd runProgram(const std::vector<std::string>& words, const std::string& /*input*/) {
    throw Failure(fmt::format("cannot run {}: there is none for Windows", words[0]));
}

ProgramEnd runProgram(const std::vector<std::string>& words, std::FILE* /*input*/,
                      std::FILE* /*output*/) {
    return runProgram(words, "");
}

std::filesystem::path programFile() {
    std::wstring program(32768, L'\0');  // no path is longer
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return program;
}
