#pragma once

#include "workbench/batch/BatchLine.h"
#include "workbench/system/FileHandle.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// What the manifests of a folder say, those of shards together: of each name its last line, in the
// manifest that was written last. In memory are the names and where their lines stand.
class Manifest {
public:
    // A folder without manifests has no names. Failure if one cannot be read.
    explicit Manifest(const std::filesystem::path& folder);

    // In the order of the alphabet.
    [[nodiscard]] std::vector<std::string> names() const;
    // None if there is none of that name. May be called from several threads.
    [[nodiscard]] std::optional<BatchLine> line(const std::string& name) const;
    // Whether a batch has made a result of that name, or had begun it when it was killed: the file
    // may be replaced.
    [[nodiscard]] bool made(const std::string& name) const;

private:
    struct Place {
        std::size_t file = 0;
        std::int64_t offset = -1;  // -1: no line yet, it had been begun
        bool made = false;
    };

    void read(const std::filesystem::path& path);
    void readBegun(const std::filesystem::path& path);

    std::vector<std::filesystem::path> files;
    std::unordered_map<std::string, Place> places;
};

// What stands beside a manifest while a batch runs: names of results, a line each, before they take
// their place. "batch.jsonl" has ".batch.begun".
std::filesystem::path begunBeside(const std::filesystem::path& manifest);

// Makes of all manifests of a folder one, batch.jsonl, with the last line of each name.
void mergeManifests(const std::filesystem::path& folder);
