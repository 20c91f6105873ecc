#include "workbench/files/Format.h"
#include "workbench/files/array/NpyHeader.h"
#include "workbench/files/array/NpyReader.h"
#include "workbench/files/array/NpyWriter.h"

#include <utility>

static bool isNpy(std::string_view head) {
    return head.starts_with(NpyHeader::mark);
}

static std::unique_ptr<SignalReader> openNpy(FileHandle file, const SourceName& source,
                                             const ReadOptions& options) {
    seekFile(file.get(), 0, SEEK_END);
    const std::int64_t length = filePosition(file.get());
    return std::make_unique<NpyReader>(std::move(file), 0, length, source, options);
}

static std::unique_ptr<SignalWriter> createNpy(const SignalTarget& target, const ResultInfo& info) {
    return std::make_unique<NpyWriter>(target, info);
}

extern const Format npyFormat = {"npy",   {".npy"}, Format::Kind::measurement, {}, isNpy,
                                 openNpy, createNpy};
