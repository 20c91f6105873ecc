#pragma once

#include "workbench/parts/hdf5/Hdf5Handle.h"
#include "workbench/signals/SourceName.h"

#include <cstdint>
#include <string>
#include <vector>

// An HDF5 file that is read. Links that lead out of it are never followed.
class Hdf5File {
public:
    // Failure if it cannot be opened, naming the file.
    Hdf5File(const std::string& path, const SourceName& source);

    [[nodiscard]] hid_t id() const { return file.get(); }
    [[nodiscard]] std::int64_t length() const { return bytes; }

    // What the groups hold, each object under its first path, in the order of the names; groups
    // and types are left out, and so are links by path within the file, which are second names.
    struct Object {
        std::string path;  // "/run 3/voltage"
        bool elsewhere;    // a link to another file
    };
    [[nodiscard]] std::vector<Object> objects() const;

    // The Failure that the file is damaged, with what the library says.
    [[noreturn]] void refuse(const Hdf5Error& error) const;

private:
    std::string name;  // for messages
    Hdf5Handle file;
    std::int64_t bytes = 0;
};
