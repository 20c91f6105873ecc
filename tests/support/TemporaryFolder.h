#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

// A folder of its own for a test. It goes, with all that is in it, when the object goes.
class TemporaryFolder {
public:
    TemporaryFolder()
        : folder(std::filesystem::temp_directory_path() /
                 ("fendra-test-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directory(folder);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::string path(const std::string& name) const { return (folder / name).string(); }

    // Writes a file and returns its path.
    std::string write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

    // The bytes of a file; none if there is no such file.
    std::string read(const std::string& name) const { return contents(path(name)); }
    static std::string contents(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // How many files are in it, hidden ones too.
    std::ptrdiff_t count() const {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    }

private:
    std::filesystem::path folder;
};
