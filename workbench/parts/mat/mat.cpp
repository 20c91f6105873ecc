#include "workbench/messages/Failure.h"
#include "workbench/parts/Part.h"

#include <fmt/format.h>

#include <matio.h>

static std::string version() {
    int major = 0, minor = 0, release = 0;
    Mat_GetLibraryVersion(&major, &minor, &release);
    return fmt::format("{}.{}.{}", major, minor, release);
}

static std::vector<FilePart> parts(const std::string& path, const SourceName& file) {
    mat_t* const mat = Mat_Open(path.c_str(), MAT_ACC_RDONLY);
    if (mat == nullptr) {
        throw Failure(fmt::format("{} is damaged", file.shown));
    }
    Mat_Close(mat);
    return {};
}

static std::unique_ptr<SignalReader> open(const std::string&, const SourceName& source,
                                          const ReadOptions&) {
    throw Failure(source.shown);
}

extern const Part matPart;
const Part matPart = {"libmatio", version, parts, open, nullptr};
