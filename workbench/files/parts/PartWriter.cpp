#include "workbench/files/parts/PartWriter.h"

#include "workbench/files/disk/FileStream.h"
#include "workbench/files/disk/PartialFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/signals/Transfer.h"

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

PartWriter::PartWriter(const PartProgram& program, SignalTarget signalTarget, ResultInfo info)
    : part(program),
      target(std::move(signalTarget)),
      result(std::move(info)),
      output(target.name, target.replace),
      spool(openTemporary()) {
    if (EncodingRow::of(target.encoding).integer || target.dither) {
        throw Failure(
            fmt::format("{} holds floating-point samples; leave out {}", target.name.shown,
                        target.dither ? "--dither" : "the encoding, or take float64 or float32"));
    }
    if (target.encoding == Encoding::automatic) {
        target.encoding = Encoding::float64;
    }
    part.version(target.name.shown);
}

void PartWriter::checkRange(const double* interleaved, std::int64_t count) const {
    constexpr auto most = static_cast<double>(std::numeric_limits<float>::max());
    for (std::int64_t i = 0; i < count * result.channels; ++i) {
        if (std::isfinite(interleaved[i]) && std::abs(interleaved[i]) > most) {
            throw Failure(
                fmt::format("{}, sample {}, channel {}: {} does not fit into the encoding; leave "
                            "out --encoding",
                            target.name.shown, samples + i / result.channels + 1,
                            i % result.channels + 1, interleaved[i]));
        }
    }
}

void PartWriter::write(const double* interleaved, std::int64_t count) {
    if (target.encoding == Encoding::float32) {
        checkRange(interleaved, count);
    }
    putSamples(spool.get(), interleaved, static_cast<std::size_t>(count * result.channels));
    samples += count;
}

void PartWriter::finish(const std::vector<std::string>& closingNotes) {
    std::vector<std::string> notes = result.notes;
    notes.insert(notes.end(), closingNotes.begin(), closingNotes.end());
    SignalInfo info;
    info.channels = result.channels;
    info.samples = samples;
    info.rate = result.rate;
    info.axis = result.axis;
    info.names = result.columnNames;
    putFacts(spool.get(), {info, target, notes});
    if (output.seekable()) {
        part.write(spool.get(), output.stream(), target.name);
    } else {
        std::error_code ignored;  // a library may open a file by its name alone
        const PartialFile file(std::filesystem::temp_directory_path(ignored) / "fendra-output");
        if (file.file == nullptr) {
            output.fail();
        }
        part.write(spool.get(), file.file.get(), target.name);
        output.copy(file.file.get());
    }
    output.commit();
}
