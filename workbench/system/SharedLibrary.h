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

    // The file of the library that lies beside the running program; name is without its ending.
    static std::filesystem::path besideProgram(const std::string& name);

private:
    void* handle;
};
