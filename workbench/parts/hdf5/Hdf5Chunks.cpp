#include "workbench/parts/hdf5/Hdf5Chunks.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/variables/VariableShape.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <optional>
#include <zlib.h>

static constexpr hsize_t mostExpansion = 1032;  // by deflate
static constexpr hsize_t checksumBytes = 4;

hsize_t product(hsize_t a, hsize_t b) {
    constexpr hsize_t most = std::numeric_limits<hsize_t>::max();
    return b != 0 && a > most / b ? most : a * b;
}

hsize_t product(const std::vector<std::uint64_t>& lengths) {
    hsize_t all = 1;
    for (const hsize_t length : lengths) {
        all = product(all, length);
    }
    return all;
}

static std::vector<H5Z_filter_t> filtersOf(hid_t plan) {
    std::vector<H5Z_filter_t> filters(static_cast<std::size_t>(succeeded(H5Pget_nfilters(plan))));
    for (std::size_t i = 0; i < filters.size(); ++i) {
        unsigned flags = 0;
        std::size_t parameters = 0;
        std::array<char, 64> title = {};
        filters[i] = succeeded(H5Pget_filter2(plan, static_cast<unsigned>(i), &flags, &parameters,
                                              nullptr, title.size() - 1, title.data(), nullptr));
    }
    return filters;
}

// How many bytes a stream of zlib holds (P. Deutsch, RFC 1950, 1996); none if it does not end well.
static std::optional<hsize_t> inflatedSize(std::vector<Bytef>& packed) {
    z_stream stream = {};
    if (inflateInit(&stream) != Z_OK) {
        throw std::bad_alloc();
    }
    std::array<Bytef, 1 << 15> block = {};
    stream.next_in = packed.data();
    stream.avail_in = static_cast<uInt>(packed.size());
    hsize_t size = 0;
    int state = Z_OK;
    while (state == Z_OK) {
        stream.next_out = block.data();
        stream.avail_out = static_cast<uInt>(block.size());
        state = inflate(&stream, Z_NO_FLUSH);
        size += block.size() - stream.avail_out;
    }
    inflateEnd(&stream);
    return state == Z_STREAM_END ? std::optional(size) : std::nullopt;
}

void Hdf5Chunks::check(const Hdf5File& file) const {
    std::vector<hsize_t> chunk(dimensions.size());
    succeeded(H5Pget_chunk(plan, static_cast<int>(chunk.size()), chunk.data()));
    hsize_t size = bytes, all = 1;
    for (std::size_t i = 0; i < chunk.size(); ++i) {
        const hsize_t along = std::max<hsize_t>(1, chunk[i]);
        size = product(size, along);
        all = product(all, (dimensions[i] - 1) / along + 1);
    }
    const bool packed = succeeded(H5Pget_nfilters(plan)) > 0;
    const auto length = static_cast<hsize_t>(file.length());
    if (size >
        (packed ? std::max<hsize_t>(cachedChunkBytes, product(length, mostExpansion)) : length)) {
        throw Failure(
            fmt::format("{} declares chunks of {} bytes, which a file of {} bytes cannot "
                        "hold; copy it again",
                        name, size, length));
    }
    checkFilters();
    hsize_t written = 0;
    if (all <= length) {
        const Hdf5Handle space(H5Dget_space(dataset), H5Sclose);
        succeeded(H5Dget_num_chunks(dataset, space.get(), &written));
    }
    if (written < all) {
        throw Failure(
            fmt::format("{} declares {} samples, of which some or all were never "
                        "written; choose another dataset",
                        name, shapeName(dimensions)));
    }
    checkFirst(size, length);
}

void Hdf5Chunks::checkFilters() const {
    for (const H5Z_filter_t filter : filtersOf(plan)) {
        if (H5Zfilter_avail(filter) <= 0) {
            throw Failure(
                fmt::format("{} is compressed by filter {}, which is not installed; save "
                            "it compressed by deflate, or install a plug-in for HDF5",
                            name, filter));
        }
    }
}

// All chunks of a dataset are declared as one. What is stored of a chunk tells how long it is where
// filters that keep its length, or add a checksum, come before deflate or alone, and checksums
// alone after it.
void Hdf5Chunks::checkFirst(hsize_t size, hsize_t length) const {
    unsigned options = 0;
    succeeded(H5Pget_chunk_opts(plan, &options));
    if ((options & H5D_CHUNK_DONT_FILTER_PARTIAL_CHUNKS) != 0) {
        return;
    }
    const std::vector<hsize_t> first(dimensions.size());
    hsize_t stored = 0;
    unsigned left = 0;  // a bit for each filter that this chunk has not gone through
    haddr_t place = 0;
    succeeded(H5Dget_chunk_info_by_coord(dataset, first.data(), &left, &place, &stored));
    bool packed = false;
    for (const H5Z_filter_t filter : filtersOf(plan)) {
        const bool gone = (left & 1U) == 0;
        left >>= 1U;
        if (!gone || (packed && filter == H5Z_FILTER_FLETCHER32)) {
            continue;
        }
        if (packed || (filter != H5Z_FILTER_SHUFFLE && filter != H5Z_FILTER_FLETCHER32 &&
                       filter != H5Z_FILTER_DEFLATE)) {
            return;
        }
        size += filter == H5Z_FILTER_FLETCHER32 ? checksumBytes : 0;
        packed = filter == H5Z_FILTER_DEFLATE;
    }
    std::optional<hsize_t> found = stored;
    if (packed && stored <= length) {
        std::vector<Bytef> chunk(static_cast<std::size_t>(stored));
        succeeded(H5Dread_chunk(dataset, H5P_DEFAULT, first.data(), &left, chunk.data()));
        found = inflatedSize(chunk);
    }
    if (found != size) {
        throw Failure(
            fmt::format("{} is damaged: its chunks do not hold the values that it declares; "
                        "copy the file again",
                        name));
    }
}
