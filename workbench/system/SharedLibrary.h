#pragma once

#include <filesystem>
#include <string>

// A library loaded at run time.
class SharedLibrary {
public:
    // Failure if the file cannot be loaded. Its text is the reason alone; the caller knows what the
    // library is for.
    explicit SharedLibrary(const std::filesystem::path& file);
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary();

    // The address of an export, null if there is none of that name.
    [[nodiscard]] void* symbol(const char* name) const;

    // The folder of everything that the program loads or runs of its own: where the shared library
    // of the kernels lies, which is in use wherever this is. Without that, the program's folder.
    static std::filesystem::path ownFolder();
    // The file of a library in it; name is without its ending.
    static std::filesystem::path ownFile(const std::string& name);

private:
    void* handle;
};
