#include "workbench/module/StoredGraph.h"

#include "host/B_BasisModule.h"
#include "platform/CArchiveException.h"
#include "platform/Desktop.h"
#include "platform/DialogResource.h"
#include "workbench/files/disk/FileStream.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <cstddef>
#include <sstream>

// What is longer is no stored graph.
static constexpr std::size_t longestGraph = 4096;

static std::string readStart(const std::string& path) {
    const FileHandle file = openInput(SourceName(path));
    std::string bytes(longestGraph + 1, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0) {
        throw Failure(fmt::format("cannot read {}: {}", SourceName(path).shown, errorText()));
    }
    return bytes;
}

static std::string problem(CArchiveException::Cause cause) {
    switch (cause) {
        case CArchiveException::badSchema:
            return "holds settings of another version of the module, which this one does not read; "
                   "the file is unchanged: store new settings under another name";
        case CArchiveException::endOfFile:
            return "is not a stored graph, or is truncated: it ends within the settings; make one "
                   "with "
                   "fendra settings";
        case CArchiveException::badIndex:
            return "is damaged: its number of outputs does not go with its settings; make another "
                   "one with fendra settings";
        default:
            return "cannot be loaded; make another one with fendra settings";
    }
}

namespace {

// What a module says of another version holds for a host that goes on with default values. Here
// nothing goes on, so its message would be wrong.
class SilentDesktop : public Desktop {
public:
    SilentDesktop() : before(install(this)) {}
    SilentDesktop(const SilentDesktop&) = delete;
    SilentDesktop& operator=(const SilentDesktop&) = delete;
    ~SilentDesktop() override { install(before); }

    int messageBox(const CString& /*text*/, const CString& /*caption*/,
                   unsigned /*style*/) override {
        return IDOK;
    }
    void runDialog(CDialog& /*dialog*/) override {}

private:
    Desktop* before;
};

}  // namespace

void loadGraph(B_BasisModule& module, const std::string& path) {
    const std::string name = SourceName(path).shown;
    std::stringstream stream(readStart(path));
    CArchive archive(stream, CArchive::load);
    const SilentDesktop silent;
    try {
        module.Serialize(archive);
    } catch (const CArchiveException& exception) {
        throw Failure(fmt::format("{} {}", name, problem(exception.cause)));
    }
    if (stream.rdbuf()->in_avail() > 0) {
        throw Failure(
            fmt::format("{} has trailing data; a stored graph holds the settings of one module and "
                        "nothing else",
                        name));
    }
}

void storeGraph(B_BasisModule& module, const std::string& path, bool replace) {
    std::stringstream stream;
    CArchive archive(stream, CArchive::store);
    module.Serialize(archive);
    OutputFile file(SourceName::ofOutput(path), replace);
    file.write(stream.str());
    file.commit();
}
