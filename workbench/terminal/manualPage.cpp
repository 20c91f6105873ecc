#include "workbench/terminal/manualPage.h"

#include "workbench/terminal/help.h"
#include "workbench/terminal/texts.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <string>

// Text for the man page formatter, in which a backslash, a hyphen and a leading dot mean something,
// and which breaks no word by itself.
static std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else if (c == '|') {  // a line may break after it
            result += "|\\:";
        } else if ((c == '.' || c == '\'') && (result.empty() || result.back() == '\n')) {
            result += std::string("\\&") + c;
        } else {
            result += c;
        }
    }
    return result;
}

static std::string examples(const std::string& lines) {
    return ".nf\n" + escaped(lines) + ".fi\n";
}

static std::string commandSection(const CLI::App& command) {
    std::string section =
        fmt::format(".SS fendra {}\n{}\n{}\n.PP\n{}", fullName(command), escaped(summary(command)),
                    escaped(details(command)), examples(command.get_footer()));
    for (const CLI::Option* option : shownOptions(command)) {
        section += fmt::format(".TP\n\\fB{}\\fR\n{}\n", escaped(term(*option)),
                               escaped(explanation(*option)));
    }
    return section;
}

std::string manualPage(const CLI::App& program) {
    std::string text = fmt::format(
        ".TH FENDRA 1\n.SH NAME\nfendra \\- convolve and deconvolve signals\n"
        ".SH SYNOPSIS\n\\fBfendra\\fR COMMAND [OPTION...]\n"
        ".SH DESCRIPTION\n{}\n.PP\n{}\n.SH EXAMPLES\n{}.SH COMMANDS\n",
        escaped(summary(program)), escaped(details(program)), examples(program.get_footer()));
    for (const CLI::App* command : shownCommands(program)) {
        text += commandSection(*command);
        for (const CLI::App* subcommand : shownCommands(*command)) {
            text += commandSection(*subcommand);
        }
    }
    return text + fmt::format(".SH FILES\n{}\n.SH EXIT STATUS\n{}\n", escaped(filesText()),
                              escaped(exitText));
}
