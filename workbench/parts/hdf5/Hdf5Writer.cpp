#include "workbench/parts/hdf5/Hdf5Writer.h"

#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Failure.h"
#include "workbench/parts/hdf5/Hdf5Handle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

static constexpr std::int64_t blockLength = 1 << 15;  // values, unless a row has more

static void checkShape(const SignalInfo& info, const SignalTarget& target) {
    if (info.samples == 1 && info.channels > 1) {
        throw Failure(
            fmt::format("{}: a single row of a dataset is read as one signal, not as {} "
                        "channels; write text, as with -o FILE.csv",
                        target.name.shown, info.channels));
    }
}

static void setNumber(hid_t dataset, const char* name, double value) {
    const Hdf5Handle space(H5Screate(H5S_SCALAR), H5Sclose);
    const Hdf5Handle attribute(
        H5Acreate2(dataset, name, H5T_IEEE_F64LE, space.get(), H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    succeeded(H5Awrite(attribute.get(), H5T_NATIVE_DOUBLE, &value));
}

static Hdf5Handle textType() {
    Hdf5Handle type(H5Tcopy(H5T_C_S1), H5Tclose);
    succeeded(H5Tset_size(type.get(), H5T_VARIABLE));
    succeeded(H5Tset_cset(type.get(), H5T_CSET_UTF8));
    return type;
}

static void setTexts(hid_t dataset, const char* name, const std::vector<std::string>& texts,
                     hid_t space) {
    std::vector<const char*> values;
    values.reserve(texts.size());
    for (const std::string& text : texts) {
        values.push_back(text.c_str());
    }
    const Hdf5Handle type = textType();
    const Hdf5Handle attribute(
        H5Acreate2(dataset, name, type.get(), space, H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    succeeded(H5Awrite(attribute.get(), type.get(), values.data()));
}

static void setText(hid_t dataset, const char* name, const std::string& text) {
    const Hdf5Handle space(H5Screate(H5S_SCALAR), H5Sclose);
    setTexts(dataset, name, {text}, space.get());
}

static void setTexts(hid_t dataset, const char* name, const std::vector<std::string>& texts) {
    const hsize_t count = texts.size();
    if (count > 0) {
        const Hdf5Handle space(H5Screate_simple(1, &count, nullptr), H5Sclose);
        setTexts(dataset, name, texts, space.get());
    }
}

// "voltage (mV)" in its two parts, where these give it back.
static std::pair<std::string, std::string> parted(const std::string& name) {
    const std::size_t open = name.rfind(" (");
    if (open == std::string::npos || name.back() != ')') {
        return {name, ""};
    }
    const std::string first = name.substr(0, open);
    const std::string unit = name.substr(open + 2, name.size() - open - 3);
    return withUnit(first, unit) == name ? std::pair(first, unit) : std::pair(name, std::string());
}

static void setNames(hid_t dataset, const std::vector<std::string>& columns) {
    std::vector<std::string> names, units;
    for (const std::string& column : columns) {
        const auto [name, unit] = parted(column);
        names.push_back(name);
        units.push_back(unit);
    }
    setTexts(dataset, "names", names);
    if (std::any_of(units.begin(), units.end(), [](const auto& unit) { return !unit.empty(); })) {
        setTexts(dataset, "units", units);
    }
}

// With a rate, an axis that is not a time has no place.
static void setAttributes(hid_t dataset, const ResultInfo& info) {
    const bool hasRate = info.rate > 0.0;
    if (hasRate) {
        setNumber(dataset, "rate", info.rate);
    }
    const bool fromZero = info.axis && hasRate && info.axis->start == 0.0 && info.axis->step > 0.0;
    if (info.axis && !fromZero && info.axis->time == hasRate) {
        setText(dataset, "axis", hasRate ? "t_s" : info.axis->name);
        setNumber(dataset, "axis_start", info.axis->start);
        setNumber(dataset, "axis_step", info.axis->step);
    }
    setNames(dataset, info.columnNames);
    setTexts(dataset, "notes", info.notes);
}

// In the layout of version 1.8 of the library, whose attributes may be of any length.
static Hdf5Handle createFile(const std::string& path) {
    const Hdf5Handle access(H5Pcreate(H5P_FILE_ACCESS), H5Pclose);
    succeeded(H5Pset_libver_bounds(access.get(), H5F_LIBVER_V18, H5F_LIBVER_V18));
    succeeded(H5Pset_file_locking(access.get(), false, true));
    const Hdf5Handle creation(H5Pcreate(H5P_FILE_CREATE), H5Pclose);
    succeeded(H5Pset_obj_track_times(creation.get(), false));
    return {H5Fcreate(path.c_str(), H5F_ACC_TRUNC, creation.get(), access.get()), H5Fclose};
}

static Hdf5Handle createDataset(hid_t file, hid_t type, const SignalInfo& info) {
    const std::array<hsize_t, 2> shape = {static_cast<hsize_t>(info.samples),
                                          static_cast<hsize_t>(info.channels)};
    const Hdf5Handle space(H5Screate_simple(2, shape.data(), nullptr), H5Sclose);
    const Hdf5Handle creation(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
    succeeded(H5Pset_obj_track_times(creation.get(), false));
    succeeded(H5Pset_fill_time(creation.get(), H5D_FILL_TIME_NEVER));
    return {H5Dcreate2(file, "signal", type, space.get(), H5P_DEFAULT, creation.get(), H5P_DEFAULT),
            H5Dclose};
}

static void writeRows(hid_t dataset, SignalReader& samples) {
    const SignalInfo& info = samples.info();
    const Hdf5Handle space(H5Dget_space(dataset), H5Sclose);
    const std::int64_t most = std::max<std::int64_t>(1, blockLength / info.channels);
    std::vector<double> block(static_cast<std::size_t>(most * info.channels));
    std::int64_t first = 0;
    while (const std::int64_t got = samples.read(block.data(), most)) {
        const std::array<hsize_t, 2> start = {static_cast<hsize_t>(first), 0};
        const std::array<hsize_t, 2> count = {static_cast<hsize_t>(got),
                                              static_cast<hsize_t>(info.channels)};
        succeeded(H5Sselect_hyperslab(space.get(), H5S_SELECT_SET, start.data(), nullptr,
                                      count.data(), nullptr));
        const Hdf5Handle memory(H5Screate_simple(2, count.data(), nullptr), H5Sclose);
        succeeded(H5Dwrite(dataset, H5T_NATIVE_DOUBLE, memory.get(), space.get(), H5P_DEFAULT,
                           block.data()));
        first += got;
    }
}

void writeHdf5(const std::string& path, SignalReader& samples, const SignalTarget& target,
               const ResultInfo& info) {
    checkShape(samples.info(), target);
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    try {
        const Hdf5Handle file = createFile(path);
        const Hdf5Handle dataset = createDataset(
            file.get(), target.encoding == Encoding::float32 ? H5T_IEEE_F32LE : H5T_IEEE_F64LE,
            samples.info());
        setAttributes(dataset.get(), info);
        writeRows(dataset.get(), samples);
        succeeded(H5Fflush(file.get(), H5F_SCOPE_LOCAL));
    } catch (const Hdf5Error& error) {
        throw Failure(
            fmt::format("{} cannot be written ({}); make room for it, or choose another "
                        "place",
                        target.name.shown, error.what()));
    }
}
