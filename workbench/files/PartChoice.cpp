#include "workbench/files/PartChoice.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

static std::string shown(const FilePart& part) {
    return printable(part.name, 100);
}

static constexpr std::size_t mostListed = 20;

// The first of many.
static std::string listOf(std::vector<std::string> items) {
    const std::size_t more = items.size() - std::min(items.size(), mostListed);
    items.resize(items.size() - more);
    return fmt::format("{}{}", fmt::join(items, ", "),
                       more == 0 ? "" : fmt::format(" and {} more", more));
}

static const FilePart& namedPart(const std::vector<FilePart>& parts, const std::string& name,
                                 const SourceName& file) {
    std::vector<std::string> names;
    for (const FilePart& part : parts) {
        if (part.name == name || part.name == "/" + name) {
            return part;
        }
        names.push_back(shown(part));
    }
    throw Failure(fmt::format("{}: there is no {} in the file; {}", file.shown,
                              printable(name, 100),
                              names.empty() ? "it is empty" : "there are " + listOf(names)));
}

// What is wrong with a single part is said as of a file.
static const FilePart& onlyPart(const std::vector<FilePart>& parts, const SourceName& file) {
    std::vector<const FilePart*> signals;
    for (const FilePart& part : parts) {
        if (part.refusal.empty()) {
            signals.push_back(&part);
        }
    }
    if (signals.size() == 1 || parts.size() == 1) {
        return signals.empty() ? parts.front() : *signals.front();
    }
    if (signals.empty()) {
        throw Failure(parts.empty()
                          ? fmt::format("{}: nothing is in the file; choose another", file.shown)
                          : fmt::format("{}: none of the {} parts of the file is a signal; choose "
                                        "another",
                                        file.shown, parts.size()));
    }
    std::vector<std::string> names;
    names.reserve(signals.size());
    for (const FilePart* part : signals) {
        names.push_back(fmt::format("{} ({})", shown(*part), part->what));
    }
    const std::string number =
        names.size() > mostListed ? fmt::format("{}", names.size()) : "several";
    throw Failure(fmt::format("{}: {} signals, {}; name one of them, as in {}:{}", file.shown,
                              number, listOf(names), file.shown, shown(*signals.back())));
}

const FilePart& chosenPart(const std::vector<FilePart>& parts, const std::string& name,
                           const SourceName& file) {
    const FilePart& part = name.empty() ? onlyPart(parts, file) : namedPart(parts, name, file);
    if (!part.refusal.empty()) {
        throw Failure(part.refusal);
    }
    return part;
}
