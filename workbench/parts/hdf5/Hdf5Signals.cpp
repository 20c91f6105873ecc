#include "workbench/parts/hdf5/Hdf5Signals.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/parts/hdf5/Hdf5Attributes.h"
#include "workbench/parts/hdf5/Hdf5Rows.h"
#include "workbench/parts/hdf5/Hdf5Scale.h"
#include "workbench/parts/variables/VariableReader.h"
#include "workbench/parts/variables/VariableShape.h"

#include <fmt/format.h>

#include <utility>

static void checkNoScale(const Hdf5Dataset& dataset) {
    if (isScale(dataset.id())) {
        throw Failure(
            fmt::format("{} is an axis of other datasets, which is not a signal; name "
                        "one of these",
                        dataset.shown()));
    }
}

static FilePart partOf(const Hdf5File& file, const std::string& path, const SourceName& source) {
    FilePart part{path, {}, {}};
    const std::string name = fmt::format("{}:{}", source.shown, printable(path, 100));
    try {
        const Hdf5Dataset dataset(file, path, name);
        part.what = fmt::format("{}, {}", dataset.type().name, shapeName(dataset.shape()));
        VariableShape::of(dataset.shape(), name);
        checkNoScale(dataset);
    } catch (const Failure& failure) {
        part.refusal = failure.what();
    } catch (const Hdf5Error& error) {
        part.refusal = fmt::format("{} is damaged ({}); copy the file again", name, error.what());
    }
    return part;
}

static bool isBare(const Hdf5File& file, const std::string& path) {
    const hid_t dataset = H5Oopen(file.id(), path.c_str(), H5P_DEFAULT);
    return dataset >= 0 && isBareDimension(Hdf5Handle(dataset, H5Oclose).get());
}

std::vector<FilePart> datasetsOf(const Hdf5File& file, const SourceName& source) {
    std::vector<FilePart> parts;
    for (const Hdf5File::Object& object : file.objects()) {
        if (object.elsewhere) {
            const std::string shown = printable(object.path, 100);
            parts.push_back({object.path, "link to another file",
                             fmt::format("{}:{} is a link to another file, which is not followed; "
                                         "read that file",
                                         source.shown, shown)});
        } else if (!isBare(file, object.path)) {
            parts.push_back(partOf(file, object.path, source));
        }
    }
    return parts;
}

static SignalInfo factsOf(const Hdf5File& file, const Hdf5Dataset& dataset,
                          const VariableShape& shape, const std::string& path, const char* kind,
                          const SourceName& source, bool withScale) {
    SignalInfo info;
    info.source = source;
    info.format = fmt::format("{}, {}", kind, dataset.type().name);
    shape.describe(info);
    describe(info, Hdf5Attributes(dataset.id()), path);
    if (withScale && info.rate == 0.0 && !info.axis) {
        setScale(info, file, dataset, shape.rows);
    }
    return info;
}

std::unique_ptr<SignalReader> openDataset(const Hdf5File& file, const std::string& path,
                                          const char* kind, const SourceName& source,
                                          const ReadOptions& options) {
    try {
        Hdf5Dataset dataset(file, path, source.shown);
        const VariableShape shape = VariableShape::of(dataset.shape(), source.shown);
        checkNoScale(dataset);
        SignalInfo info = factsOf(file, dataset, shape, path, kind, source, options.axis != "none");
        const Packing packing = packingOf(Hdf5Attributes(dataset.id()));
        return std::make_unique<VariableReader>(
            std::move(info),
            std::make_unique<Hdf5Rows>(
                std::move(dataset),
                Hdf5Rows::Directions{shape.rows, shape.channels,
                                     std::vector<std::uint64_t>(shape.lengths.size(), 0)}),
            packing, options);
    } catch (const Hdf5Error& error) {
        file.refuse(error);
    }
}
