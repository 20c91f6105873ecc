#include "workbench/files/Format.h"
#include "workbench/files/instrument/SacHeader.h"
#include "workbench/files/instrument/SacReader.h"
#include "workbench/files/instrument/SacWriter.h"

#include <utility>

static std::unique_ptr<SignalReader> openSac(FileHandle file, const SourceName& source,
                                             const ReadOptions& options) {
    return std::make_unique<SacReader>(std::move(file), source, options);
}

static std::unique_ptr<SignalWriter> createSac(const SignalTarget& target, const ResultInfo& info) {
    return std::make_unique<SacWriter>(target, info);
}

// Seismograms.
extern const Format sacFormat = {"SAC",
                                 {".sac"},
                                 Format::Kind::measurement,
                                 {.rate = true,
                                  .axis = true,
                                  .names = true,
                                  .onlyRisingTime = true,
                                  .holdsName = SacHeader::holdsName},
                                 SacHeader::recognises,
                                 openSac,
                                 createSac,
                                 Encoding::float32};
