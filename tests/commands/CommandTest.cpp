#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

// Runs the commands of the golden files in the working directory, each in a fresh copy of
// fixtures/, and compares what they print, how they end and what they leave behind. A case is
//     $ command, as a shell takes it
//     > a line on standard output
//     ! a line on standard error
//     + a file that the command creates; any other difference to the fixtures is a failure
//     = exit status, where it is not 0
//     ? what it needs, and is skipped without: audio, linux or native (a processor of its own, and
//       no emulator) unless the variable FENDRA_LACKS names that; windows, where that names linux;
//       or a part, as fendra-mat, beside this program
// Lines that begin with # are comments; an empty line ends a case.

namespace fs = std::filesystem;

namespace {

struct Case {
    fs::path file;
    int line;
    std::string command, output, errors, needs;
    std::vector<std::string> created;
    int status = 0;
};

std::ostream& operator<<(std::ostream& stream, const Case& golden) {
    return stream << golden.command;
}

}  // namespace

static void addLine(std::vector<Case>& cases, const std::string& line, const fs::path& file,
                    int number) {
    const std::string text = line.size() > 2 ? line.substr(2) : "";
    if (line[0] == '$') {
        cases.push_back({file, number, text, "", "", "", {}, 0});
        return;
    }
    Case& current = cases.back();
    switch (line[0]) {
        case '>':
            current.output += text + "\n";
            break;
        case '!':
            current.errors += text + "\n";
            break;
        case '+':
            current.created.push_back(text);
            break;
        case '=':
            current.status = std::stoi(text);
            break;
        case '?':
            current.needs = text;
            break;
        default:
            throw std::invalid_argument(file.string() + ":" + std::to_string(number) + ": " + line);
    }
}

static std::vector<Case> goldenCases() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(".")) {
        if (entry.path().extension() == ".golden") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<Case> cases;
    for (const fs::path& file : files) {
        std::ifstream stream(file);
        int number = 1;
        for (std::string line; std::getline(stream, line); ++number) {
            if (!line.empty() && line[0] != '#') {
                addLine(cases, line, file.filename(), number);
            }
        }
    }
    return cases;
}

static std::string contents(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

static std::map<std::string, std::string> everythingIn(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        files[fs::relative(entry.path(), folder)] =
            entry.is_regular_file() ? contents(entry.path()) : "";
    }
    return files;
}

// Files that are not as before, but for those that the golden file names.
static void expectNothingElse(const std::map<std::string, std::string>& before,
                              std::map<std::string, std::string> after,
                              const std::vector<std::string>& created) {
    for (const std::string& name : created) {
        EXPECT_EQ(1U, after.erase(name)) << name << " is missing";
    }
    for (const auto& [name, bytes] : after) {
        const auto old = before.find(name);
        EXPECT_TRUE(old != before.end() && old->second == bytes)
            << name << " left behind or changed";
    }
    EXPECT_EQ(before.size(), after.size());
}

namespace {

class Command : public testing::TestWithParam<Case> {};

}  // namespace

static bool isLacking(const std::string& need, const fs::path& programs) {
    if (need.rfind("fendra-", 0) == 0) {
        return !fs::exists(programs / need);
    }
    const char* const variable = std::getenv("FENDRA_LACKS");
    const std::string lacks = variable == nullptr ? "" : variable;
    return need == "windows" ? lacks.find("linux") == std::string::npos
                             : lacks.find(need) != std::string::npos;
}

static bool isAnyLacking(const std::string& needs, const fs::path& programs) {
    std::istringstream words(needs);
    return std::any_of(std::istream_iterator<std::string>(words), {},
                       [&](const std::string& need) { return isLacking(need, programs); });
}

TEST_P(Command, DoesAsTheGoldenFileSays) {
    const Case& golden = GetParam();
    const fs::path programs = fs::read_symlink("/proc/self/exe").parent_path();
    if (isAnyLacking(golden.needs, programs)) {
        GTEST_SKIP() << "needs " << golden.needs;
    }
    const TemporaryFolder scratch, streams;
    fs::copy("fixtures", scratch.path(""), fs::copy_options::recursive);
    const auto before = everythingIn(scratch.path(""));

    const std::string output = streams.path("out"), errors = streams.path("err");
    std::ostringstream script;
    script << "cd '" << scratch.path("") << "' && export LC_ALL=C BIN='" << programs.string()
           << "' PATH='" << programs.string() << "':\"$PATH\" && {\n"
           << golden.command << "\n} >'" << output << "' 2>'" << errors << "' </dev/null";
    const int status = std::system(script.str().c_str());

    const testing::ScopedTrace place(golden.file.c_str(), golden.line, golden.command);
    EXPECT_EQ(golden.status, WEXITSTATUS(status));
    EXPECT_EQ(golden.output, contents(output)) << "on standard output";
    EXPECT_EQ(golden.errors, contents(errors)) << "on standard error";
    expectNothingElse(before, everythingIn(scratch.path("")), golden.created);
}

INSTANTIATE_TEST_SUITE_P(Golden, Command, testing::ValuesIn(goldenCases()), [](const auto& golden) {
    return golden.param.file.stem().string() + "_" + std::to_string(golden.param.line);
});
