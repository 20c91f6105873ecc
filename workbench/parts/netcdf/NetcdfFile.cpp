#include "workbench/parts/netcdf/NetcdfFile.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/netcdf/ClassicExtent.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <netcdf.h>
#include <type_traits>
#include <utility>

static void check(int state, const std::string& name) {
    if (state != NC_NOERR) {
        throw Failure(fmt::format("{}: the NetCDF file cannot be read ({}); copy it again", name,
                                  nc_strerror(state)));
    }
}

NetcdfFile::NetcdfFile(const std::string& path, const SourceName& source) : name(source.shown) {
    checkExtent(path, source);
    check(nc_open(path.c_str(), NC_NOWRITE, &file), name);
    int count = 0;
    check(nc_inq_nvars(file, &count), name);
    for (int number = 0; number < count; ++number) {
        all.push_back(variableOf(number));
    }
}

NetcdfFile::~NetcdfFile() {
    nc_close(file);
}

NetcdfFile::Variable NetcdfFile::variableOf(int number) const {
    Variable variable;
    variable.id = number;
    std::array<char, NC_MAX_NAME + 1> text = {};
    std::array<int, NC_MAX_VAR_DIMS> dimensions = {};
    int count = 0;
    check(nc_inq_var(file, number, text.data(), &variable.type, &count, dimensions.data(), nullptr),
          name);
    variable.name = text.data();
    for (int i = 0; i < count; ++i) {
        std::size_t length = 0;
        check(nc_inq_dim(file, dimensions.at(static_cast<std::size_t>(i)), text.data(), &length),
              name);
        variable.lengths.push_back(length);
        variable.dimensions.emplace_back(text.data());
    }
    return variable;
}

const NetcdfFile::Variable* NetcdfFile::named(const std::string& variable) const {
    const auto found = std::find_if(all.begin(), all.end(), [&variable](const Variable& each) {
        return each.name == variable;
    });
    return found == all.end() ? nullptr : &*found;
}

std::string NetcdfFile::Variable::typeName() const {
    static constexpr std::array<const char*, 12> names = {"",
                                                          "8-bit integer",
                                                          "",
                                                          "16-bit integer",
                                                          "32-bit integer",
                                                          "32-bit float",
                                                          "64-bit float",
                                                          "8-bit integer without sign",
                                                          "16-bit integer without sign",
                                                          "32-bit integer without sign",
                                                          "64-bit integer",
                                                          "64-bit integer without sign"};
    return names.at(static_cast<std::size_t>(type));
}

bool NetcdfFile::Variable::isNarrow() const {
    return type == NC_FLOAT;
}

NetcdfAttributes::NetcdfAttributes(const NetcdfFile& ofFile) : file(ofFile), owner(NC_GLOBAL) {}

std::vector<std::string> NetcdfAttributes::names() const {
    std::vector<std::string> all;
    std::array<char, NC_MAX_NAME + 1> text = {};
    for (int i = 0; nc_inq_attname(file.id(), owner, i, text.data()) == NC_NOERR; ++i) {
        all.emplace_back(text.data());
    }
    return all;
}

std::vector<double> NetcdfAttributes::numbers(const std::string& name) const {
    int type = 0;
    std::size_t count = 0;
    if (nc_inq_att(file.id(), owner, name.c_str(), &type, &count) != NC_NOERR || type == NC_CHAR) {
        return {};
    }
    std::vector<double> values(count);
    return nc_get_att_double(file.id(), owner, name.c_str(), values.data()) == NC_NOERR
               ? values
               : std::vector<double>();
}

std::vector<std::string> NetcdfAttributes::texts(const std::string& name) const {
    int type = 0;
    std::size_t length = 0;
    if (nc_inq_att(file.id(), owner, name.c_str(), &type, &length) != NC_NOERR || type != NC_CHAR) {
        return {};
    }
    std::string text(length, '\0');
    if (nc_get_att_text(file.id(), owner, name.c_str(), text.data()) != NC_NOERR) {
        return {};
    }
    text.resize(std::min(text.find('\0'), text.size()));
    return {text};
}

NetcdfRows::NetcdfRows(std::shared_ptr<const NetcdfFile> ofFile, NetcdfFile::Variable itsVariable,
                       VariableShape itsShape, std::string displayName)
    : file(std::move(ofFile)),
      variable(std::move(itsVariable)),
      shape(std::move(itsShape)),
      name(std::move(displayName)) {}

// Integers of 64 bits, of which it returns the first that 53 bits do not hold.
template <typename Integer, typename Read>
static std::size_t readWide(std::size_t count, double* to, Read read) {
    constexpr auto most = static_cast<Integer>(Integer{1} << 53U);
    std::vector<Integer> values(count);
    read(values.data());
    std::transform(values.begin(), values.end(), to,
                   [](Integer value) { return static_cast<double>(value); });
    const auto wide = std::find_if(values.begin(), values.end(), [](Integer value) {
        return value > most || (std::is_signed_v<Integer> && value < Integer{0} - most);
    });
    return static_cast<std::size_t>(wide - values.begin());
}

std::size_t NetcdfRows::read(std::int64_t first, std::int64_t count, double* to) {
    std::vector<std::size_t> start(shape.lengths.size(), 0), lengths(shape.lengths.size(), 1);
    start[shape.rows] = static_cast<std::size_t>(first);
    lengths[shape.rows] = static_cast<std::size_t>(count);
    auto all = static_cast<std::size_t>(count);
    if (shape.channels) {
        lengths[*shape.channels] = static_cast<std::size_t>(shape.lengths[*shape.channels]);
        all *= lengths[*shape.channels];
    }
    const auto with = [&](auto operation, auto* values) {
        check(operation(file->id(), variable.id, start.data(), lengths.data(), values), name);
    };
    if (variable.type == NC_INT64) {
        return readWide<long long>(all, to,
                                   [&](auto* values) { with(nc_get_vara_longlong, values); });
    }
    if (variable.type == NC_UINT64) {
        return readWide<unsigned long long>(
            all, to, [&](auto* values) { with(nc_get_vara_ulonglong, values); });
    }
    with(nc_get_vara_double, to);
    return all;
}
