#include "workbench/parts/hdf5/Hdf5Scale.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/parts/hdf5/Hdf5Attributes.h"
#include "workbench/parts/hdf5/Hdf5Rows.h"
#include "workbench/parts/variables/Conventions.h"
#include "workbench/parts/variables/CoordinateAxis.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <utility>

bool isScale(hid_t dataset) {
    return Hdf5Attributes(dataset).text("CLASS") == "DIMENSION_SCALE";
}

bool isBareDimension(hid_t dataset) {
    return isScale(dataset) && Hdf5Attributes(dataset).text("NAME").starts_with(
                                   "This is a netCDF dimension but not a netCDF variable");
}

// The first scale of a dimension: the attribute DIMENSION_LIST holds references to them.
static std::optional<Hdf5Handle> scaleOf(const Hdf5Dataset& dataset, std::size_t dimension) {
    constexpr std::size_t mostDimensions = 2;
    if (H5Aexists(dataset.id(), "DIMENSION_LIST") <= 0) {
        return std::nullopt;
    }
    const Hdf5Handle attribute(H5Aopen(dataset.id(), "DIMENSION_LIST", H5P_DEFAULT), H5Aclose);
    const Hdf5Handle space(H5Aget_space(attribute.get()), H5Sclose);
    const Hdf5Handle type(H5Aget_type(attribute.get()), H5Tclose);
    const auto count = static_cast<std::size_t>(H5Sget_simple_extent_npoints(space.get()));
    if (H5Tget_class(type.get()) != H5T_VLEN || count > mostDimensions || dimension >= count) {
        return std::nullopt;
    }
    const Hdf5Handle item(H5Tget_super(type.get()), H5Tclose);
    if (H5Tequal(item.get(), H5T_STD_REF_OBJ) <= 0) {
        return std::nullopt;
    }
    std::array<hvl_t, mostDimensions> lists = {};
    succeeded(H5Aread(attribute.get(), type.get(), lists.data()));
    hid_t scale = H5I_INVALID_HID;
    if (lists[dimension].len > 0) {
        scale = H5Rdereference2(dataset.id(), H5P_DEFAULT, H5R_OBJECT, lists[dimension].p);
    }
    H5Dvlen_reclaim(type.get(), space.get(), H5P_DEFAULT, lists.data());
    if (scale < 0) {
        return std::nullopt;
    }
    Hdf5Handle opened(scale, H5Oclose);
    return H5Iget_type(scale) == H5I_DATASET ? std::optional(std::move(opened)) : std::nullopt;
}

static std::string nameOf(hid_t object) {
    std::array<char, 256> path = {};
    return H5Iget_name(object, path.data(), path.size()) > 0 ? leafOf(path.data()) : "axis";
}

void setScale(SignalInfo& info, const Hdf5File& file, const Hdf5Dataset& dataset,
              std::size_t dimension) {
    try {
        std::optional<Hdf5Handle> scale = scaleOf(dataset, dimension);
        if (!scale || isBareDimension(scale->get())) {
            return;
        }
        const std::string name = nameOf(scale->get());
        const std::string unit = Hdf5Attributes(scale->get()).text("units");
        Hdf5Dataset points(file, std::move(*scale), name);
        if (points.shape() != std::vector<std::uint64_t>{dataset.shape()[dimension]}) {
            return;
        }
        const bool narrow = points.type().narrow;
        Hdf5Rows rows(std::move(points), {0, {}, {0}});
        setAxis(info, name, unit, rows, narrow);
    } catch (const Hdf5Error& error) {
        info.remarks.push_back(fmt::format("{}: its axis cannot be read ({}): left out",
                                           info.source.shown, error.what()));
    } catch (const Failure& failure) {
        info.remarks.push_back(
            fmt::format("{}: its axis is left out: {}", info.source.shown, failure.what()));
    }
}
