#include "workbench/signals/SourceName.h"

#include "workbench/messages/Printable.h"

#include <utility>

SourceName::SourceName(std::string inputPath)
    : path(std::move(inputPath)), shown(isStandardStream() ? "standard input" : printable(path)) {}

SourceName SourceName::ofOutput(std::string path) {
    SourceName name(std::move(path));
    if (name.isStandardStream()) {
        name.shown = "standard output";
    }
    return name;
}
