#include "workbench/system/Console.h"

#include "workbench/system/fileNames.h"

#include <fcntl.h>
#include <io.h>
// The second needs the first.
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

struct Console::State {
    UINT codePage = GetConsoleOutputCP();
    HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
    DWORD errorMode = 0;
    bool terminal = GetConsoleMode(errors, &errorMode) != 0;
};

Console::Console() : before(std::make_unique<State>()) {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
    if (before->terminal) {  // the line of progress is cleared by an escape sequence
        SetConsoleMode(before->errors, before->errorMode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

Console::~Console() {
    SetConsoleOutputCP(before->codePage);
    if (before->terminal) {
        SetConsoleMode(before->errors, before->errorMode);
    }
}

// The arguments of main are in the code page of the system, which does not have every letter.
std::vector<std::string> Console::words(int /*argc*/, char** /*argv*/) {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> all(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i) {
        words.push_back(nameOf(all.get()[i]));
    }
    return words;
}

bool Console::isTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}
