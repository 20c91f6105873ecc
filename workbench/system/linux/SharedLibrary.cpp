#include "workbench/system/SharedLibrary.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/FileHandle.h"
#include "workbench/system/Program.h"

#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <link.h>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>

namespace {

// A file of the kind that the loader takes: headers at its start say what else is in it.
class ElfFile {
public:
    explicit ElfFile(const std::filesystem::path& path)
        : file(openFile(path, "rb")), size(std::filesystem::file_size(path, ignored)) {}

    // Whether it is one of this system, and less is there than its headers declare.
    [[nodiscard]] bool isTruncated() const;

private:
    template <typename Header>
    bool read(std::uint64_t offset, Header& header) const {
        return seekFile(file.get(), static_cast<std::int64_t>(offset), SEEK_SET) &&
               std::fread(&header, sizeof header, 1, file.get()) == 1;
    }
    [[nodiscard]] bool holds(std::uint64_t offset, std::uint64_t length) const {
        return offset <= size && length <= size - offset;
    }

    std::error_code ignored;
    FileHandle file;
    std::uint64_t size;
};

bool ElfFile::isTruncated() const {
    ElfW(Ehdr) header = {};
    constexpr unsigned char width = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (file == nullptr || !read(0, header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_ident[EI_CLASS] != width) {
        return false;
    }
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment = {};
        if (!read(header.e_phoff + std::uint64_t{i} * header.e_phentsize, segment) ||
            !holds(segment.p_offset, segment.p_filesz)) {
            return true;
        }
    }
    return !holds(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize);
}

}  // namespace

// The loader maps what the headers declare, and where the file has ended the process dies of it.
static const std::filesystem::path& whole(const std::filesystem::path& file) {
    if (ElfFile(file).isTruncated()) {
        throw Failure("the file is truncated");
    }
    return file;
}

// A library may come to lie where another was, loaded and left by another thread. The loader's own
// lock orders what both write to their globals, but a race detector does not see it.
static std::mutex& loading() {
    static std::mutex oneAtATime;
    return oneAtATime;
}

static void* load(const std::filesystem::path& file) {
    // An absolute path, or the loader would look for a bare name in the system's folders.
    const std::filesystem::path path = std::filesystem::absolute(file);
    const std::lock_guard lock(loading());
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

SharedLibrary::SharedLibrary(const std::filesystem::path& file) : handle(load(whole(file))) {
    if (handle == nullptr) {
        const std::string reason = dlerror();  // begins with the path and a colon
        const std::size_t colon = reason.rfind(": ");
        throw Failure(printable(colon == std::string::npos ? reason : reason.substr(colon + 2)));
    }
}

SharedLibrary::~SharedLibrary() {
    const std::lock_guard lock(loading());
    dlclose(handle);
}

void* SharedLibrary::symbol(const char* name) const {
    return dlsym(handle, name);
}

std::filesystem::path SharedLibrary::ownFolder() {
    void* const kernels = dlopen("libfendra-kernels.so", RTLD_LAZY | RTLD_NOLOAD);
    if (kernels == nullptr) {
        return programFile().parent_path();
    }
    const link_map* entry = nullptr;
    const bool isKnown = dlinfo(kernels, RTLD_DI_LINKMAP, &entry) == 0;
    const std::filesystem::path file = isKnown ? entry->l_name : programFile();
    dlclose(kernels);  // whoever uses it has loaded it, too
    return std::filesystem::absolute(file).lexically_normal().parent_path();
}

std::filesystem::path SharedLibrary::ownFile(const std::string& name) {
    return ownFolder() / (name + ".so");
}
