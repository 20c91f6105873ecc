#include "workbench/messages/Failure.h"
#include "workbench/parts/Part.h"
#include "workbench/signals/Transfer.h"
#include "workbench/signals/requireFinite.h"
#include "workbench/system/FileHandle.h"
#include "workbench/system/ownProcess.h"
#include "workbench/system/systemMemory.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

static constexpr const char* inputPath = "/proc/self/fd/0";

static FileHandle opened(const std::string& path, const char* mode) {
    FileHandle file = openFile(path, mode);
    if (file == nullptr) {
        throw Failure(
            fmt::format("{} cannot be opened; a part works on files, not on pipes", path));
    }
    return file;
}

// As much as no sound file of that length takes: a broken one may have loops.
static void limitWork() {
    const FileHandle input = opened(inputPath, "rb");
    seekFile(input.get(), 0, SEEK_END);
    const double megabytes = static_cast<double>(filePosition(input.get())) / 1e6;
    limitProcess(std::max(freeMemory() / 2.0, 256e6), 60.0 + 10.0 * megabytes);
}

static void list(const Part& part, const std::string& name, const std::string& outputPath) {
    const FileHandle output = opened(outputPath, "wb");
    for (const FilePart& each : part.parts(inputPath, SourceName(name))) {
        for (const std::string& text : {each.name, each.what, each.refusal}) {
            std::fwrite(text.c_str(), 1, text.size() + 1, output.get());
        }
    }
    if (std::fflush(output.get()) != 0) {
        throw Failure("cannot write a temporary file; make room for it");
    }
}

static ReadOptions optionsOf(const std::vector<std::string>& words) {
    ReadOptions options;
    options.part = words[0];
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i] == "--allow-nonfinite") {
            options.allowNonfinite = true;
        } else if (words[i] == "--lossy") {
            options.lossy = true;
        } else if (words[i] == "--axis" && i + 1 < words.size()) {
            options.axis = words[++i];
        }
    }
    return options;
}

static void read(const Part& part, const std::string& name, const ReadOptions& options,
                 const std::string& outputPath) {
    const std::unique_ptr<SignalReader> reader = part.open(inputPath, SourceName(name), options);
    const FileHandle output = opened(outputPath, "wb");
    const SignalInfo& info = reader->info();
    const std::int64_t most = std::max<std::int64_t>(1, 65536 / info.channels);
    std::vector<double> block(static_cast<std::size_t>(most * info.channels));
    std::int64_t done = 0;
    while (const std::int64_t got = reader->read(block.data(), most)) {
        if (!options.allowNonfinite) {
            requireFinite(info, done, block.data(), got);
        }
        putSamples(output.get(), block.data(), static_cast<std::size_t>(got * info.channels));
        done += got;
    }
    putFacts(output.get(), {info, {}, {}});
}

static void write(const Part& part, const std::string& name, const std::string& outputPath) {
    const SourceName target(name);
    TransferReader samples(opened(inputPath, "rb"), target);
    SignalTarget given = samples.transfer().target;
    given.name = target;
    part.write(outputPath, samples, given, samples.transfer().result());
}

static void run(const Part& part, const std::vector<std::string>& words) {
    const std::string output = takeStandardOutput();
    limitWork();
    // HDF5 would ask for a lock, which fendra has on files that it writes.
    setOwnVariable("HDF5_USE_FILE_LOCKING", "FALSE");
    if (words[0] == "list") {
        list(part, words[1], output);
    } else if (words[0] == "write") {
        write(part, words[1], output);
    } else {
        read(part, words[1], optionsOf({words.begin() + 2, words.end()}), output);
    }
}

static int report(const std::string& line) {
    fmt::print(stderr, "{}\n", line);
    return 1;
}

int partMain(const Part& part, int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    const std::string verb = words.empty() ? "" : words[0];
    if (verb == "version") {
        fmt::print("{} {}\n", part.library, part.version());
        return 0;
    }
    const bool isCall = (verb == "list" && words.size() == 2) ||
                        (verb == "write" && words.size() == 2 && part.write != nullptr) ||
                        (verb == "read" && words.size() >= 3);
    if (!isCall) {
        report("a part of fendra, which runs it on files that are read by a library");
        return 2;
    }
    try {
        run(part, words);
        return 0;
    } catch (const std::bad_alloc&) {
        return report(fmt::format(
            "{}: reading it takes more memory than is free; save it in smaller parts", words[1]));
    } catch (const std::exception& error) {
        return report(error.what());
    }
}
