#include "workbench/files/disk/SampleStore.h"

#include "workbench/files/disk/FileStream.h"
#include "workbench/messages/Failure.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>

SampleStore::SampleStore() : file(openTemporary()) {}

[[noreturn]] static void fail() {
    throw Failure(fmt::format(
        "cannot keep the result in a temporary file: {}; make room for it, or name another folder "
        "in TMPDIR",
        errorText()));
}

void SampleStore::add(const double* samples, std::size_t count) {
    errno = 0;
    if (std::fwrite(samples, sizeof *samples, count, file.get()) < count) {
        fail();
    }
}

std::vector<double> SampleStore::take(std::size_t most) {
    errno = 0;
    if (!reads) {
        reads = true;
        if (std::fflush(file.get()) != 0 || !seekFile(file.get(), 0, SEEK_SET)) {
            fail();
        }
    }
    std::vector<double> samples(most);
    samples.resize(std::fread(samples.data(), sizeof samples[0], most, file.get()));
    if (std::ferror(file.get()) != 0) {
        fail();
    }
    return samples;
}
