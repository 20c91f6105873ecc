#include "workbench/parts/hdf5/Hdf5File.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <algorithm>
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
        succeeded(H5Pset_file_locking(access.get(), false, true));
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
    std::string path;
    H5L_type_t type;
};

}  // namespace

static herr_t keep(hid_t /*group*/, const char* name, const H5L_info_t* info, void* links) {
    try {
        static_cast<std::vector<Link>*>(links)->push_back({name, info->type});
        return 0;
    } catch (const std::bad_alloc&) {
        return -1;
    }
}

// What a group holds, by paths, with the first one last.
static std::vector<Link> linksOf(hid_t group, const std::string& path) {
    std::vector<Link> links;
    succeeded(H5Literate(group, H5_INDEX_NAME, H5_ITER_INC, nullptr, keep, &links));
    std::reverse(links.begin(), links.end());
    for (Link& link : links) {
        link.path = path + "/" + link.path;
    }
    return links;
}

// Group by group; one that holds itself is opened once.
static std::vector<Hdf5File::Object> walkThrough(hid_t file) {
    constexpr std::size_t most = 1000000;
    std::vector<Hdf5File::Object> found;
    std::set<haddr_t> seen;
    std::vector<Link> left = {{"", H5L_TYPE_HARD}};
    while (!left.empty()) {
        const Link link = std::move(left.back());
        left.pop_back();
        if (found.size() + left.size() > most) {
            throw Hdf5Error("more objects than can be listed");
        }
        if (link.type != H5L_TYPE_HARD) {
            if (link.type != H5L_TYPE_SOFT) {
                found.push_back({link.path, true});
            }
            continue;
        }
        const char* const path = link.path.empty() ? "/" : link.path.c_str();
        const Hdf5Handle object(H5Oopen(file, path, H5P_DEFAULT), H5Oclose);
        H5O_info_t info = {};
        succeeded(H5Oget_info2(object.get(), &info, H5O_INFO_BASIC));
        if (!seen.insert(info.addr).second) {
            continue;
        }
        if (info.type == H5O_TYPE_GROUP) {
            const std::vector<Link> links = linksOf(object.get(), link.path);
            left.insert(left.end(), links.begin(), links.end());
        } else if (info.type == H5O_TYPE_DATASET) {
            found.push_back({link.path, false});
        }
    }
    return found;
}

std::vector<Hdf5File::Object> Hdf5File::objects() const {
    try {
        return walkThrough(file.get());
    } catch (const Hdf5Error& error) {
        refuse(error);
    }
}
