#include "workbench/files/Format.h"
#include "workbench/files/instrument/JcampReader.h"

#include <utility>

static std::unique_ptr<SignalReader> openJcamp(FileHandle file, const SourceName& source,
                                               const ReadOptions& options) {
    return std::make_unique<JcampReader>(std::move(file), source, options);
}

// Spectra. They are read and not written.
extern const Format jcampFormat = {"JCAMP-DX", {".jdx", ".dx"},        Format::Kind::measurement,
                                   {},         JcampBlock::recognises, openJcamp,
                                   nullptr,    Encoding::float64,      JcampReader::parts};
