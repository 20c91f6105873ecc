#include "workbench/files/disk/PartialFile.h"

#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cctype>
#include <random>
#include <system_error>
#include <thread>

namespace fs = std::filesystem;

// A path for a signal handler to read: it is complete while the state is watching.
class PartialFile::Watch {
public:
    // Null if all are taken, or the path is too long.
    static Watch* start(const fs::path& path);
    void stop();
    static void removeAll();

private:
    enum State { unused, changing, watching, removing };
    static_assert(std::atomic<State>::is_always_lock_free, "a signal handler cannot wait");
    static std::array<Watch, 64> all;

    bool change(State from, State to) { return state.compare_exchange_strong(from, to); }

    std::atomic<State> state = unused;
    std::array<fs::path::value_type, 4096> watched = {};
};

std::array<PartialFile::Watch, 64> PartialFile::Watch::all;

PartialFile::Watch* PartialFile::Watch::start(const fs::path& path) {
    const std::size_t length = path.native().size();
    for (Watch& watch : all) {
        if (length < watch.watched.size() && watch.change(unused, changing)) {
            std::copy_n(path.c_str(), length + 1, watch.watched.begin());
            watch.state = watching;
            return &watch;
        }
    }
    return nullptr;
}

// The removal by a handler in another thread is waited for; one in this thread has ended.
void PartialFile::Watch::stop() {
    while (!change(watching, unused)) {
        std::this_thread::yield();
    }
}

void PartialFile::Watch::removeAll() {
    for (Watch& watch : all) {
        if (watch.change(watching, removing)) {
            removeFile(watch.watched.data());
            watch.state = watching;
        }
    }
}

void PartialFile::removeAll() {
    Watch::removeAll();
}

static std::atomic<void (*)(const std::string&)> leftoverReport = nullptr;

void PartialFile::onLeftover(void (*report)(const std::string&)) {
    leftoverReport = report;
}

// What the names of all partial files of a target begin with, cut to leave room for the rest.
static fs::path beginningOf(const fs::path& target) {
    fs::path beginning = ".";
    beginning += target.filename().native().substr(0, 200);
    beginning += ".";
    return beginning;
}

static bool isPartial(const fs::path& name, const fs::path& beginning) {
    if (!name.native().starts_with(beginning.native())) {
        return false;
    }
    const std::string rest = nameOf(name.native().substr(beginning.native().size()));
    const auto digits = std::find_if_not(
        rest.begin(), rest.end(), [](unsigned char letter) { return std::isxdigit(letter) != 0; });
    return digits - rest.begin() == 8 && rest.substr(8) == ".part";
}

// The file that one of that name was to become: without the dot before, ".", digits and ".part".
static fs::path targetOf(const fs::path& partial) {
    constexpr std::size_t appended = 14;
    const std::string name = nameOf(partial.filename());
    if (name.size() < appended + 2) {
        return {};
    }
    const std::string target = name.substr(1, name.size() - appended - 1);
    return isPartial(partial.filename(), beginningOf(pathOf(target)))
               ? partial.parent_path() / pathOf(target)
               : fs::path();
}

void PartialFile::removeLeftovers(const fs::path& folder,
                                  const std::function<bool(const fs::path& target)>& isOwn) {
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error);
         !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        const fs::path target = targetOf(entry->path());
        if (!target.empty() && isOwn(target) && !isInUse(entry->path())) {
            removeFile(entry->path().c_str());
        }
    }
}

static void reportLeftovers(const fs::path& target) {
    const auto report = leftoverReport.load();
    if (report == nullptr) {
        return;
    }
    const fs::path folder = target.parent_path(), beginning = beginningOf(target);
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? "." : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path name = entry->path().filename();
        if (isPartial(name, beginning) && !isInUse(folder / name)) {
            // With the separators that command lines have on every system.
            report(printable(nameOf((folder / name).generic_u8string())));
        }
    }
}

// The device of random numbers takes as long as a small file.
static fs::path partialPath(const fs::path& target) {
    thread_local std::mt19937 random(std::random_device{}());
    fs::path name = beginningOf(target);
    name += fmt::format("{:08x}.part", random());
    return target.parent_path() / name;
}

// Watched before it is there, so that no signal comes in between.
PartialFile::PartialFile(const fs::path& target) : path(partialPath(target)) {
    reportLeftovers(target);
    watch = Watch::start(path);
    file = createFile(path);
}

PartialFile::~PartialFile() {
    file.reset();
    std::error_code ignored;
    fs::remove(path, ignored);
    if (watch != nullptr) {
        watch->stop();
    }
}
