#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/parts/Part.h"
#include "workbench/parts/netcdf/Andi.h"
#include "workbench/parts/netcdf/NetcdfFile.h"
#include "workbench/parts/variables/CoordinateAxis.h"
#include "workbench/parts/variables/VariableReader.h"

#include <fmt/format.h>

#include <netcdf.h>
#include <utility>

using Variable = NetcdfFile::Variable;

// The version begins the text: "4.9.0 of Jan 15 2023 ...".
static std::string version() {
    const std::string text = nc_inq_libvers();
    return text.substr(0, text.find(' '));
}

// Failure if it is not a signal.
static VariableShape shapeOf(const NetcdfFile& file, const Variable& variable,
                             const std::string& name) {
    if (variable.typeName().empty()) {
        throw Failure(
            fmt::format("{} holds text, which are not samples; save a variable of numbers", name));
    }
    VariableShape shape = VariableShape::of(variable.lengths, name);
    if (isChromatogram(file) && variable.name != chromatogramName) {
        throw Failure(
            fmt::format("{} is a table beside the chromatogram, which is not a signal; "
                        "name {}",
                        name, chromatogramName));
    }
    if (variable.isCoordinate()) {
        throw Failure(fmt::format(
            "{} is an axis of other variables, which is not a signal; name one of these", name));
    }
    return shape;
}

static std::vector<FilePart> parts(const std::string& path, const SourceName& source) {
    const NetcdfFile file(path, source);
    std::vector<FilePart> all;
    for (const Variable& variable : file.variables()) {
        const std::string type = variable.typeName();
        FilePart part{
            variable.name,
            fmt::format("{}, {}", type.empty() ? "text" : type, shapeName(variable.lengths)),
            {}};
        try {
            shapeOf(file, variable,
                    fmt::format("{}:{}", source.shown, printable(variable.name, 100)));
        } catch (const Failure& failure) {
            part.refusal = failure.what();
        }
        all.push_back(part);
    }
    return all;
}

// From the variable that has the name of the dimension along which the samples stand.
static void setCoordinate(SignalInfo& info, const std::shared_ptr<const NetcdfFile>& file,
                          const std::string& dimension) {
    const Variable* const points = file->named(dimension);
    if (points == nullptr || !points->isCoordinate() || points->typeName().empty()) {
        return;
    }
    NetcdfRows rows(file, *points, {points->lengths, 0, {}}, info.source.shown);
    setAxis(info, points->name, NetcdfAttributes(*file, *points).text("units"), rows,
            points->isNarrow());
}

static std::unique_ptr<SignalReader> open(const std::string& path, const SourceName& source,
                                          const ReadOptions& options) {
    const auto file = std::make_shared<const NetcdfFile>(path, source);
    const Variable* const variable = file->named(options.part);
    if (variable == nullptr) {
        throw Failure(fmt::format("{}: the file has changed meanwhile; try again", source.shown));
    }
    VariableShape shape = shapeOf(*file, *variable, source.shown);
    SignalInfo info;
    info.source = source;
    info.format =
        fmt::format("{}, {}", isChromatogram(*file) ? "ANDI" : "NetCDF", variable->typeName());
    shape.describe(info);
    const NetcdfAttributes attributes(*file, *variable);
    describe(info, attributes, variable->name);
    if (isChromatogram(*file)) {
        describeChromatogram(info, *file);
    } else if (info.rate == 0.0 && !info.axis && options.axis != "none") {
        setCoordinate(info, file, variable->dimensions[shape.rows]);
    }
    return std::make_unique<VariableReader>(
        std::move(info),
        std::make_unique<NetcdfRows>(file, *variable, std::move(shape), source.shown),
        packingOf(attributes), options);
}

// NetCDF files of the classic formats; those of NetCDF-4 are HDF5.
extern const Part netcdfPart = {"libnetcdf", version, parts, open, nullptr};
