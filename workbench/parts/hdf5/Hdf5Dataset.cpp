#include "workbench/parts/hdf5/Hdf5Dataset.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/variables/VariableShape.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>
#include <utility>

// What a chunk may take in memory, and what all that are kept may; of larger ones a part of the
// file that is compressed as far as deflate can.
static constexpr hsize_t cachedBytes = hsize_t{1} << 26;
static constexpr hsize_t mostExpansion = 1032;

static Hdf5Handle openDataset(const Hdf5File& file, const std::string& path) {
    const Hdf5Handle access(H5Pcreate(H5P_DATASET_ACCESS), H5Pclose);
    constexpr std::size_t slots = 12421;  // a prime number
    succeeded(H5Pset_chunk_cache(access.get(), slots, cachedBytes, 1.0));
    return {H5Dopen2(file.id(), path.c_str(), access.get()), H5Dclose};
}

// Before its shape is asked for: that of a virtual dataset is in other files.
static Hdf5Handle checkedSpace(hid_t dataset, const std::string& name) {
    const Hdf5Handle plan(H5Dget_create_plist(dataset), H5Pclose);
    if (H5Pget_layout(plan.get()) == H5D_VIRTUAL || H5Pget_external_count(plan.get()) > 0) {
        throw Failure(
            fmt::format("{} stands in other files, which are not followed; save the "
                        "samples in the file itself",
                        name));
    }
    return {H5Dget_space(dataset), H5Sclose};
}

static Hdf5Type typeOf(hid_t dataset, const std::string& name) {
    const Hdf5Handle type(H5Dget_type(dataset), H5Tclose);
    return Hdf5Type::of(type.get(), name);
}

Hdf5Dataset::Hdf5Dataset(const Hdf5File& file, const std::string& path, std::string displayName)
    : Hdf5Dataset(file, openDataset(file, path), std::move(displayName)) {}

Hdf5Dataset::Hdf5Dataset(const Hdf5File& file, Hdf5Handle opened, std::string displayName)
    : name(std::move(displayName)),
      dataset(std::move(opened)),
      space(checkedSpace(dataset.get(), name)),
      valueType(typeOf(dataset.get(), name)) {
    const Hdf5Handle type(H5Dget_type(dataset.get()), H5Tclose);
    bytes = H5Tget_size(type.get());
    std::vector<hsize_t> lengths(
        static_cast<std::size_t>(succeeded(H5Sget_simple_extent_ndims(space.get()))));
    succeeded(H5Sget_simple_extent_dims(space.get(), lengths.data(), nullptr));
    dimensions.assign(lengths.begin(), lengths.end());
    if (H5Sget_simple_extent_type(space.get()) == H5S_NULL ||
        std::find(dimensions.begin(), dimensions.end(), 0U) != dimensions.end()) {
        throw Failure(fmt::format("{} holds no samples; choose another dataset", name));
    }
    checkStorage(file);
}

// Clipped to the largest number that there is; likewise of all lengths.
static hsize_t product(hsize_t a, hsize_t b) {
    constexpr hsize_t most = std::numeric_limits<hsize_t>::max();
    return b != 0 && a > most / b ? most : a * b;
}

template <typename Lengths>
static hsize_t product(const Lengths& lengths) {
    hsize_t all = 1;
    for (const hsize_t length : lengths) {
        all = product(all, length);
    }
    return all;
}

void Hdf5Dataset::checkStorage(const Hdf5File& file) const {
    const Hdf5Handle plan(H5Dget_create_plist(dataset.get()), H5Pclose);
    const hsize_t needed = product(product(dimensions), bytes);
    if (H5Pget_layout(plan.get()) == H5D_CHUNKED) {
        checkChunks(plan.get(), file);
    } else if (needed > static_cast<hsize_t>(file.length())) {
        throw Failure(
            fmt::format("{} is truncated: it declares {} values of {} bytes, but the "
                        "file has {} bytes; copy it again",
                        name, shapeName(dimensions), bytes, file.length()));
    } else if (H5Dget_storage_size(dataset.get()) < needed) {
        throw Failure(
            fmt::format("{} declares {} samples that were never written; choose another "
                        "dataset",
                        name, shapeName(dimensions)));
    }
}

// Every chunk has to be there, and none may take more memory than the file accounts for.
void Hdf5Dataset::checkChunks(hid_t plan, const Hdf5File& file) const {
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
    if (size > (packed ? std::max(cachedBytes, product(length, mostExpansion)) : length)) {
        throw Failure(
            fmt::format("{} declares chunks of {} bytes, which a file of {} bytes cannot "
                        "hold; copy it again",
                        name, size, length));
    }
    checkFilters(plan);
    hsize_t written = 0;
    if (all <= length) {
        succeeded(H5Dget_num_chunks(dataset.get(), space.get(), &written));
    }
    if (written < all) {
        throw Failure(
            fmt::format("{} declares {} samples, of which some or all were never "
                        "written; choose another dataset",
                        name, shapeName(dimensions)));
    }
}

void Hdf5Dataset::checkFilters(hid_t plan) const {
    const int count = succeeded(H5Pget_nfilters(plan));
    for (int i = 0; i < count; ++i) {
        unsigned flags = 0;
        std::size_t parameters = 0;
        std::array<char, 64> title = {};
        const H5Z_filter_t filter =
            succeeded(H5Pget_filter2(plan, static_cast<unsigned>(i), &flags, &parameters, nullptr,
                                     title.size() - 1, title.data(), nullptr));
        if (H5Zfilter_avail(filter) <= 0) {
            throw Failure(
                fmt::format("{} is compressed by filter {}, which is not installed; save "
                            "it compressed by deflate, or install a plug-in for HDF5",
                            name, filter));
        }
    }
}

// The first of integers that 53 bits do not hold.
template <typename Integer>
static std::size_t converted(const std::vector<Integer>& values, double* to) {
    constexpr auto most = static_cast<Integer>(Integer{1} << 53U);
    std::transform(values.begin(), values.end(), to,
                   [](Integer value) { return static_cast<double>(value); });
    const auto wide = std::find_if(values.begin(), values.end(), [](Integer value) {
        return value > most || (std::is_signed_v<Integer> && value < Integer{0} - most);
    });
    return static_cast<std::size_t>(wide - values.begin());
}

std::size_t Hdf5Dataset::read(const std::vector<std::uint64_t>& start,
                              const std::vector<std::uint64_t>& count, double* to) const {
    const std::vector<hsize_t> begin(start.begin(), start.end()),
        lengths(count.begin(), count.end());
    const Hdf5Handle selected(H5Scopy(space.get()), H5Sclose);
    if (!lengths.empty()) {
        succeeded(H5Sselect_hyperslab(selected.get(), H5S_SELECT_SET, begin.data(), nullptr,
                                      lengths.data(), nullptr));
    }
    const hsize_t all = product(lengths);
    const Hdf5Handle memory(H5Screate_simple(1, &all, nullptr), H5Sclose);
    const auto fill = [&](hid_t kind, void* values) {
        succeeded(H5Dread(dataset.get(), kind, memory.get(), selected.get(), H5P_DEFAULT, values));
    };
    if (valueType.wide < 0) {
        fill(H5T_NATIVE_DOUBLE, to);
        return static_cast<std::size_t>(all);
    }
    if (valueType.wide == H5T_NATIVE_INT64) {
        std::vector<std::int64_t> values(static_cast<std::size_t>(all));
        fill(valueType.wide, values.data());
        return converted(values, to);
    }
    std::vector<std::uint64_t> values(static_cast<std::size_t>(all));
    fill(valueType.wide, values.data());
    return converted(values, to);
}
