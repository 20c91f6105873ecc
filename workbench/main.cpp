#include "workbench/commands/Command.h"
#include "workbench/files/disk/PartialFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/system/Console.h"
#include "workbench/system/endings.h"
#include "workbench/terminal/complaint.h"
#include "workbench/terminal/help.h"
#include "workbench/terminal/texts.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

static int report(const std::string& message, int status) {
    fmt::print(stderr, "fendra: {}\n", message);
    return status;
}

static void noteLeftover(const std::string& name) {
    fmt::print(stderr, "note: {} is left from a run that was cut off; remove it\n", name);
}

static int runCommand(std::vector<std::string> words) {
    CLI::App program(fmt::format("{}\n{}", programSummary, lagText), "fendra");
    program.set_help_flag("-h,--help", "show this help");
    program.set_version_flag("--version", "fendra " FENDRA_VERSION, "show the program's version");
    program.formatter(std::make_shared<Help>());
    program.footer(programExamples());
    program.require_subcommand(1);
    for (const Command* command : Command::all()) {
        command->add(program);
    }
    const std::string leading = complaintOnFirst(program, words);
    if (!leading.empty()) {
        return report(leading, 2);
    }
    try {
        std::vector<std::string> backwards(words.rbegin(), words.rend());  // as the parser wants it
        program.parse(std::move(backwards));
    } catch (const CLI::CallForHelp& help) {
        std::ostringstream text;
        program.exit(help, text);
        fmt::print("{}", text.str());  // which, unlike std::cout, says why it could not
        return 0;
    } catch (const CLI::CallForVersion& version) {
        fmt::print("{}\n", version.what());
        return 0;
    } catch (const CLI::ParseError& error) {
        return report(complaint(program, error, words), 2);
    }
    return 0;
}

static int reportOutput(int error) {
    return report(fmt::format("cannot write standard output: {}; make room or send it elsewhere",
                              error == 0 ? "write error" : std::generic_category().message(error)),
                  1);
}

// What the command printed may still have to be written.
static int statusOfOutput(int status) {
    errno = 0;
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return status;
    }
    return reportOutput(errno);
}

int main(int argc, char** argv) {
    catchEndings(PartialFile::removeAll);
    PartialFile::onLeftover(noteLeftover);
    const Console console;
    try {
        return statusOfOutput(runCommand(Console::words(argc, argv)));
    } catch (const Stopped& stop) {
        return statusOfOutput(report(stop.what(), 130));
    } catch (const std::bad_alloc&) {
        return report(noMemoryLeft, 1);
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        return report(noMemoryLeft, 1);
    } catch (const std::system_error& error) {  // of printing, beyond the stream's buffer
        return std::ferror(stdout) != 0 ? reportOutput(error.code().value())
                                        : report(error.what(), 1);
    } catch (const std::exception& error) {
        std::fflush(stdout);
        return report(error.what(), 1);
    }
}
