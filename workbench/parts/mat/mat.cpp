#include "workbench/messages/Printable.h"
#include "workbench/parts/Part.h"
#include "workbench/parts/mat/MatExtent.h"
#include "workbench/parts/mat/MatFile.h"
#include "workbench/parts/mat/MatReader.h"
#include "workbench/parts/mat/writeMat.h"

#include <fmt/format.h>

static std::string version() {
    int major = 0, minor = 0, release = 0;
    Mat_GetLibraryVersion(&major, &minor, &release);
    return fmt::format("{}.{}.{}", major, minor, release);
}

static std::vector<FilePart> parts(const std::string& path, const SourceName& source) {
    const MatFile file(path, source);
    if (!file.isHdf5()) {
        requireVariables(path, source);
    }
    std::vector<FilePart> parts;
    while (const VariableHandle variable = file.next()) {
        if (variable->name != nullptr) {
            const std::string name = variable->name;
            parts.push_back({name, kindOf(*variable),
                             signalRefusal(*variable, fmt::format("{}:{}", source.shown,
                                                                  printable(name, 100)))});
        }
    }
    return parts;
}

static std::unique_ptr<SignalReader> open(const std::string& path, const SourceName& source,
                                          const ReadOptions& options) {
    return std::make_unique<MatReader>(path, source, options);
}

extern const Part matPart;
const Part matPart = {"libmatio", version, parts, open, writeMat};
