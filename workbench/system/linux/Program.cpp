#include "workbench/system/Program.h"

#include "workbench/messages/Failure.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

static std::string reason(int error) {
    return std::generic_category().message(error);
}

// Files, unlike pipes, take whatever comes while the other end waits.
static FileHandle stream(const std::string& contents) {
    FileHandle file = createUnnamedFile();
    if (file == nullptr ||
        std::fwrite(contents.data(), 1, contents.size(), file.get()) < contents.size() ||
        std::fflush(file.get()) != 0) {
        throw Failure(
            fmt::format("cannot create a temporary file: {}; make room for it, or name "
                        "another folder in TMPDIR",
                        reason(errno)));
    }
    std::rewind(file.get());
    return file;
}

static std::string contentsOf(std::FILE* file) {
    std::string text;
    std::rewind(file);
    std::array<char, 4096> block = {};
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), file)) {
        text.append(block.data(), length);
    }
    return text;
}

static pid_t start(const std::vector<std::string>& words,
                   const std::array<std::FILE*, 3>& streams) {
    std::vector<char*> arguments(words.size() + 1);  // the last one is null
    std::transform(words.begin(), words.end(), arguments.begin(), [](const std::string& word) {
        return const_cast<char*>(word.c_str());  // the call does not write to them
    });
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int i = 0; i < 3; ++i) {
        posix_spawn_file_actions_adddup2(&actions, fileno(streams.at(static_cast<std::size_t>(i))),
                                         i);
    }
    pid_t process = 0;
    const int error =
        posix_spawnp(&process, words[0].c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw Failure(fmt::format("cannot run {}: {}", words[0], reason(error)));
    }
    return process;
}

ProgramEnd runProgram(const std::vector<std::string>& words, std::FILE* input, std::FILE* output) {
    const FileHandle errors = stream("");
    std::rewind(input);
    const pid_t process = start(words, {input, output, errors.get()});
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), "",
            contentsOf(errors.get())};
}

ProgramEnd runProgram(const std::vector<std::string>& words, const std::string& input) {
    const FileHandle given = stream(input), output = stream("");
    ProgramEnd end = runProgram(words, given.get(), output.get());
    end.output = contentsOf(output.get());
    return end;
}

std::filesystem::path programFile() {
    return std::filesystem::read_symlink("/proc/self/exe");
}
