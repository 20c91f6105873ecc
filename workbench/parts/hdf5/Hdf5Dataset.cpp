#include "workbench/parts/hdf5/Hdf5Dataset.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/hdf5/Hdf5Chunks.h"
#include "workbench/parts/variables/VariableShape.h"

#include <fmt/format.h>

#include <algorithm>
#include <type_traits>
#include <utility>

static Hdf5Handle openDataset(const Hdf5File& file, const std::string& path) {
    const Hdf5Handle access(H5Pcreate(H5P_DATASET_ACCESS), H5Pclose);
    constexpr std::size_t slots = 12421;  // a prime number
    succeeded(H5Pset_chunk_cache(access.get(), slots, cachedChunkBytes, 1.0));
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

void Hdf5Dataset::checkStorage(const Hdf5File& file) const {
    const Hdf5Handle plan(H5Dget_create_plist(dataset.get()), H5Pclose);
    const hsize_t needed = product(product(dimensions), bytes);
    if (H5Pget_layout(plan.get()) == H5D_CHUNKED) {
        Hdf5Chunks{dataset.get(), plan.get(), dimensions, bytes, name}.check(file);
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
    const hsize_t all = product(count);
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
