#include "workbench/system/SharedLibrary.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/fileNames.h"

#include <fmt/format.h>

#include <dlfcn.h>

SharedLibrary::SharedLibrary(const std::filesystem::path& file)
    // An absolute path, or the loader would look for a bare name in the system's folders.
    : handle(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) {
        const std::string reason = dlerror();  // begins with the path and a colon
        const std::size_t colon = reason.rfind(": ");
        throw Failure(
            fmt::format("{} is not a module that can be loaded ({}); name one with --module",
                        printable(nameOf(file)),
                        colon == std::string::npos ? reason : reason.substr(colon + 2)));
    }
}

SharedLibrary::~SharedLibrary() {
    dlclose(handle);
}

void* SharedLibrary::symbol(const char* name) const {
    return dlsym(handle, name);
}

std::filesystem::path SharedLibrary::besideProgram(const std::string& name) {
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name + ".so");
}
