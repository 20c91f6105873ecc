#include "workbench/batch/signalList.h"

#include "workbench/batch/wildcards.h"
#include "workbench/files/Format.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <tuple>
#include <utility>

namespace fs = std::filesystem;

static bool isFormat(const std::string& ending) {
    const auto& formats = Format::all();
    return std::any_of(formats.begin(), formats.end(), [&](const Format* format) {
        const auto& endings = format->endings;
        return std::find(endings.begin(), endings.end(), ending) != endings.end();
    });
}

static bool isHidden(const fs::path& path) {
    return nameOf(path.filename()).starts_with('.');
}

namespace {

class Listing {
public:
    explicit Listing(const SignalSelection& selected) : selection(selected) {
        std::error_code ignored;
        results = fs::weakly_canonical(pathOf(selection.into), ignored);
    }

    void add(const std::string& word);
    std::vector<BatchItem> items;

private:
    using Filter = std::function<bool(const fs::path& file)>;

    void addFile(const fs::path& file, const fs::path& base);
    void addMatching(const fs::path& fixed, const std::vector<std::string>& parts);
    void addFolder(const fs::path& folder, const fs::path& base, const Filter& takes);

    [[nodiscard]] bool searches(const fs::directory_entry& folder) const;

    const SignalSelection& selection;
    fs::path results;
};

}  // namespace

// Two results of one name are told of later, when all are there.
void Listing::addFile(const fs::path& file, const fs::path& base) {
    const bool plain = base == ".";  // ./a.wav is shown as a.wav
    std::string signal = nameOf((plain ? file.lexically_relative(base) : file).generic_u8string());
    if (printable(signal) != signal) {
        throw Failure(fmt::format(
            "{}: the name has control characters, or bytes that are not UTF-8; rename the file",
            printable(signal)));
    }
    fs::path below = base.empty() ? file.filename() : file.lexically_relative(base);
    const std::string ending = lowerCaseEnding(signal);
    if (!selection.ending.empty()) {
        below.replace_extension(pathOf(selection.ending));
    } else if (!isFormat(ending)) {
        throw Failure(
            fmt::format("{}: the ending of the name does not give a format for the result; choose "
                        "one with --format",
                        signal));
    }
    items.push_back({std::move(signal), nameOf(below.generic_u8string())});
}

[[noreturn]] static void failToRead(const fs::path& folder, const std::error_code& error) {
    throw Failure(fmt::format("cannot read the folder {}: {}; check the name and the rights",
                              printable(nameOf(folder.generic_u8string())), error.message()));
}

// Whether the search goes on in a folder that it has met.
bool Listing::searches(const fs::directory_entry& folder) const {
    std::error_code ignored;
    return selection.recursive && !isHidden(folder.path()) &&
           fs::weakly_canonical(folder.path(), ignored) != results;
}

void Listing::addFolder(const fs::path& folder, const fs::path& base, const Filter& takes) {
    std::error_code error, ignored;
    fs::recursive_directory_iterator entry(folder, error);
    fs::path last = folder;
    while (!error && entry != fs::recursive_directory_iterator()) {
        last = entry->path();
        if (entry->is_directory(ignored)) {
            if (!searches(*entry)) {
                entry.disable_recursion_pending();
            }
        } else if (!isHidden(last) && takes(last)) {
            addFile(last, base);
        }
        entry.increment(error);
    }
    if (error) {
        failToRead(last, error);
    }
}

// Folders in that one whose names are as the pattern says.
static void addFolders(const fs::path& folder, const std::string& pattern,
                       std::vector<fs::path>& found) {
    std::error_code error, ignored;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (entry->is_directory(ignored) && matches(nameOf(entry->path().filename()), pattern)) {
            found.push_back(entry->path());
        }
    }
    if (error) {
        failToRead(folder, error);
    }
}

// Part by part; the last one is a pattern for files.
void Listing::addMatching(const fs::path& fixed, const std::vector<std::string>& parts) {
    std::vector<fs::path> folders = {fixed};
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        std::vector<fs::path> found;
        for (const fs::path& folder : folders) {
            addFolders(folder, parts[i], found);
        }
        folders = std::move(found);
    }
    for (const fs::path& folder : folders) {
        addFolder(folder, fixed, [&](const fs::path& file) {
            return matches(nameOf(file.filename()), parts.back());
        });
    }
}

void Listing::add(const std::string& word) {
    const fs::path path = pathOf(word);
    const std::size_t before = items.size();
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::is_directory(status)) {
        addFolder(path, path,
                  [](const fs::path& file) { return isFormat(lowerCaseEnding(nameOf(file))); });
    } else if (fs::exists(status)) {
        addFile(path, "");
    } else if (hasWildcards(word)) {
        fs::path fixed;
        std::vector<std::string> parts;
        for (const fs::path& part : path) {
            if (parts.empty() && !hasWildcards(nameOf(part))) {
                fixed /= part;
            } else {
                parts.push_back(nameOf(part));
            }
        }
        fixed = fixed.empty() ? fs::path(".") : fixed;
        if (fs::is_directory(fixed, ignored)) {
            addMatching(fixed, parts);
        }
    } else {
        throw Failure(fmt::format("there is no file {}; check the name", printable(word)));
    }
    if (items.size() == before) {
        throw Failure(fmt::format("there is no signal in {}; check the name{}", printable(word),
                                  selection.recursive ? "" : ", or add --recursive"));
    }
}

static void refuseClashes(const std::vector<BatchItem>& items, const std::string& into) {
    const auto twice =
        std::adjacent_find(items.begin(), items.end(),
                           [](const BatchItem& a, const BatchItem& b) { return a.name == b.name; });
    if (twice != items.end()) {
        throw Failure(fmt::format(
            "{} and {} would both give {}; name the folder above them, with --recursive, or run "
            "them into two folders",
            twice->signal, std::next(twice)->signal,
            nameOf((pathOf(into) / pathOf(twice->name)).generic_u8string())));
    }
}

static void refuseReplacing(const std::vector<BatchItem>& items, const fs::path& results) {
    fs::path folder, canonical;
    for (const BatchItem& item : items) {
        const fs::path signal = pathOf(item.signal);
        if (canonical.empty() || signal.parent_path() != folder) {
            std::error_code ignored;
            folder = signal.parent_path();
            canonical = fs::weakly_canonical(folder.empty() ? fs::path(".") : folder, ignored);
        }
        const std::string below =
            nameOf((canonical / signal.filename()).lexically_relative(results).generic_u8string());
        const auto found = std::lower_bound(
            items.begin(), items.end(), below,
            [](const BatchItem& other, const std::string& name) { return other.name < name; });
        if (found != items.end() && found->name == below) {
            throw Failure(
                fmt::format("the result of {} would replace {}; choose another folder with --into",
                            found->signal, item.signal));
        }
    }
}

std::vector<BatchItem> listSignals(const SignalSelection& selection) {
    Listing listing(selection);
    for (const std::string& word : selection.words) {
        listing.add(word);
    }
    std::vector<BatchItem>& items = listing.items;
    const auto key = [](const BatchItem& item) { return std::tie(item.name, item.signal); };
    std::sort(items.begin(), items.end(),
              [&](const BatchItem& a, const BatchItem& b) { return key(a) < key(b); });
    items.erase(
        std::unique(items.begin(), items.end(),
                    [&](const BatchItem& a, const BatchItem& b) { return key(a) == key(b); }),
        items.end());
    refuseClashes(items, selection.into);
    std::error_code ignored;
    refuseReplacing(items, fs::weakly_canonical(pathOf(selection.into), ignored));
    return std::move(items);
}

static constexpr const char* namePlace = "{name}";
static constexpr const char* pathPlace = "{path}";

bool isKernelPattern(const std::string& kernel) {
    return kernel.find(namePlace) != std::string::npos ||
           kernel.find(pathPlace) != std::string::npos;
}

static void replaceAll(std::string& text, const std::string& place, const std::string& value) {
    for (std::size_t i = 0; (i = text.find(place, i)) != std::string::npos; i += value.size()) {
        text.replace(i, place.size(), value);
    }
}

std::string kernelOf(const std::string& kernel, const BatchItem& item) {
    const fs::path path = pathOf(item.name);
    std::string file = kernel;
    replaceAll(file, pathPlace, nameOf((path.parent_path() / path.stem()).generic_u8string()));
    replaceAll(file, namePlace, nameOf(path.stem()));
    return file;
}
