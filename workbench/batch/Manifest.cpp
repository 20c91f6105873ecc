#include "workbench/batch/Manifest.h"

#include "workbench/batch/Shard.h"
#include "workbench/batch/wildcards.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <istream>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

fs::path begunBeside(const fs::path& manifest) {
    return manifest.parent_path() / pathOf(fmt::format(".{}.begun", nameOf(manifest.stem())));
}

// Those of a folder that match, the one that was written last at the end.
static std::vector<fs::path> filesIn(const fs::path& folder, const char* pattern) {
    std::vector<std::pair<fs::file_time_type, fs::path>> found;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        if (matches(nameOf(entry.path().filename()), pattern)) {
            found.emplace_back(entry.last_write_time(ignored), entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    std::vector<fs::path> files;
    std::transform(found.begin(), found.end(), std::back_inserter(files),
                   [](const auto& pair) { return pair.second; });
    return files;
}

// Each line that has its end.
static void forEachLine(const fs::path& path,
                        const std::function<void(const std::string&, std::int64_t)>& take) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw Failure(fmt::format("cannot read {}; check the right to",
                                  printable(nameOf(path.generic_u8string()))));
    }
    std::int64_t offset = 0;
    for (std::string line; std::getline(stream, line) && !stream.eof();) {
        take(line, offset);
        offset += std::ssize(line) + 1;
    }
}

Manifest::Manifest(const fs::path& folder) : files(filesIn(folder, "batch*.jsonl")) {
    for (const fs::path& path : filesIn(folder, ".batch*.begun")) {
        forEachLine(path, [this](const std::string& name, std::int64_t /*offset*/) {
            places[name].made = true;
        });
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        forEachLine(files[i], [this, i](const std::string& text, std::int64_t offset) {
            if (const std::optional<BatchLine> line = BatchLine::of(text)) {
                Place& place = places[line->name];
                place = {i, offset, place.made || line->result.has_value()};
            }
        });
    }
}

std::vector<std::string> Manifest::names() const {
    std::vector<std::string> names;
    for (const auto& [name, place] : places) {
        if (place.offset >= 0) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<BatchLine> Manifest::line(const std::string& name) const {
    const auto found = places.find(name);
    if (found == places.end() || found->second.offset < 0) {
        return std::nullopt;
    }
    std::ifstream stream(files[found->second.file], std::ios::binary);
    stream.seekg(found->second.offset);
    std::string text;
    std::getline(stream, text);
    return BatchLine::of(text);
}

bool Manifest::made(const std::string& name) const {
    const auto found = places.find(name);
    return found != places.end() && found->second.made;
}

void mergeManifests(const fs::path& folder) {
    const fs::path whole = folder / Shard().manifestName();
    const Manifest manifest(folder);
    OutputFile merged(SourceName::ofOutput(nameOf(whole)), true);
    for (const std::string& name : manifest.names()) {
        if (const std::optional<BatchLine> line = manifest.line(name)) {
            merged.write(line->text() + "\n");
        }
    }
    merged.commit();
    for (const fs::path& path : filesIn(folder, "batch-*-of-*.jsonl")) {
        std::error_code ignored;
        fs::remove(path, ignored);
        fs::remove(begunBeside(path), ignored);
    }
}
