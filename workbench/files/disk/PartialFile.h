#pragma once

#include "workbench/system/FileHandle.h"

#include <filesystem>
#include <functional>
#include <string>

// The file .NAME.RANDOM.part beside a file NAME: the bytes of NAME until they are complete.
class PartialFile {
public:
    // Creates it. Where that fails file is null, with errno set.
    explicit PartialFile(const std::filesystem::path& target);
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    ~PartialFile();  // closes and removes it, unless it was renamed

    // Removes all partial files that the process is writing, in any thread; up to 64 are known. For
    // signal handlers: it touches nothing except fixed buffers and removeFile.
    static void removeAll();

    // Sets what is called for each partial file that a run which was cut off has left beside a file
    // about to be written, with its name as messages show it. Null, as at the start: nothing.
    static void onLeftover(void (*report)(const std::string& shownName));

    // Removes what runs that were cut off have left in a folder and those below it, of targets that
    // are somebody's to remove. target: a path in the folder, its last part cut to 200 bytes.
    static void removeLeftovers(
        const std::filesystem::path& folder,
        const std::function<bool(const std::filesystem::path& target)>& isOwn);

    const std::filesystem::path path;
    FileHandle file;

private:
    class Watch;
    Watch* watch;
};
