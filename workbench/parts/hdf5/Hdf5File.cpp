#include "workbench/parts/hdf5/Hdf5File.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <new>
#include <set>
#include <utility>

// The class of links to other files is taken from the library: whatever a path leads through, no
// other file is opened. Locks are left out: a file that is only read may lie where there are none.
static Hdf5Handle opened(const std::string& path, const std::string& name) {
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    H5Lunregister(H5L_TYPE_EXTERNAL);
    try {
        const Hdf5Handle access(H5Pcreate(H5P_FILE_ACCESS), H5Pclose);
        succeeded(H5Pset_file_locking(access.get(), 0, 1));
        return {H5Fopen(path.c_str(), H5F_ACC_RDONLY, access.get()), H5Fclose};
    } catch (const Hdf5Error& error) {
        throw Failure(fmt::format("{}: the HDF5 file cannot be opened ({}); copy it again", name,
                                  error.what()));
    }
}

Hdf5File::Hdf5File(const std::string& path, const SourceName& source)
    : name(source.shown), file(opened(path, name)) {
    hsize_t size = 0;
    if (H5Fget_filesize(file.get(), &size) >= 0) {
        bytes = static_cast<std::int64_t>(size);
    }
}

void Hdf5File::refuse(const Hdf5Error& error) const {
    throw Failure(
        fmt::format("{}: the HDF5 file is damaged ({}); copy it again", name, error.what()));
}

namespace {

struct Link {
    std::string name;
    H5L_type_t type;
};

// Walks through the groups; one that holds itself is walked through once.
class Walk {
public:
    std::vector<Hdf5File::Object> found;

    void root(hid_t file) { object(file, "/", "", 0); }

private:
    static constexpr int deepest = 100;
    static constexpr std::size_t most = 1000000;

    void group(hid_t parent, const std::string& path, int depth) {
        if (depth > deepest || found.size() > most) {
            throw Hdf5Error("more groups than can be listed");
        }
        for (const Link& link : linksOf(parent)) {
            const std::string child = path + "/" + link.name;
            if (link.type == H5L_TYPE_HARD) {
                object(parent, link.name, child, depth);
            } else if (link.type != H5L_TYPE_SOFT) {
                found.push_back({child, true});
            }
        }
    }

    static herr_t keep(hid_t /*group*/, const char* name, const H5L_info_t* info, void* links) {
        try {
            static_cast<std::vector<Link>*>(links)->push_back({name, info->type});
            return 0;
        } catch (const std::bad_alloc&) {
            return -1;
        }
    }

    static std::vector<Link> linksOf(hid_t group) {
        std::vector<Link> links;
        succeeded(H5Literate(group, H5_INDEX_NAME, H5_ITER_INC, nullptr, keep, &links));
        return links;
    }

    void object(hid_t parent, const std::string& name, const std::string& path, int depth) {
        const Hdf5Handle object(H5Oopen(parent, name.c_str(), H5P_DEFAULT), H5Oclose);
        H5O_info_t info = {};
        succeeded(H5Oget_info2(object.get(), &info, H5O_INFO_BASIC));
        if (!seen.insert(info.addr).second) {
            return;
        }
        if (info.type == H5O_TYPE_GROUP) {
            group(object.get(), path, depth + 1);
        } else if (info.type == H5O_TYPE_DATASET) {
            found.push_back({path, false});
        }
    }

    std::set<haddr_t> seen;
};

}  // namespace

std::vector<Hdf5File::Object> Hdf5File::objects() const {
    try {
        Walk walk;
        walk.root(file.get());
        return std::move(walk.found);
    } catch (const Hdf5Error& error) {
        refuse(error);
    }
}
