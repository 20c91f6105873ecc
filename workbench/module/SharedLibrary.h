#pragma once

#include <filesystem>

// A library loaded at run time. What differs between systems in loading one is in SharedLibrary.cpp
// and nowhere else.
class SharedLibrary {
public:
    // Failure, with the system's reason, if the file cannot be loaded.
    explicit SharedLibrary(const std::filesystem::path& file);
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary();

    // The address of an export, null if there is none of that name.
    [[nodiscard]] void* symbol(const char* name) const;

    // The folder that the running program lies in.
    static std::filesystem::path programFolder();

private:
    void* handle;
};
