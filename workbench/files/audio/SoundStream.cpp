#include "workbench/files/audio/SoundStream.h"

#include "workbench/files/disk/FileStream.h"

static std::FILE* fileOf(void* user) {
    return static_cast<std::FILE*>(user);
}

static sf_count_t streamLength(void* user) {
    const std::int64_t position = filePosition(fileOf(user));
    seekFile(fileOf(user), 0, SEEK_END);
    const std::int64_t length = filePosition(fileOf(user));
    seekFile(fileOf(user), position, SEEK_SET);
    return length;
}

static sf_count_t seekStream(sf_count_t offset, int origin, void* user) {
    return seekFile(fileOf(user), offset, origin) ? filePosition(fileOf(user)) : -1;
}

static sf_count_t readStream(void* block, sf_count_t length, void* user) {
    return static_cast<sf_count_t>(
        std::fread(block, 1, static_cast<std::size_t>(length), fileOf(user)));
}

static sf_count_t writeStream(const void* block, sf_count_t length, void* user) {
    return static_cast<sf_count_t>(
        std::fwrite(block, 1, static_cast<std::size_t>(length), fileOf(user)));
}

static sf_count_t tellStream(void* user) {
    return filePosition(fileOf(user));
}

SoundHandle openSound(std::FILE* file, int mode, SF_INFO& info) {
    SF_VIRTUAL_IO stream = {streamLength, seekStream, readStream, writeStream, tellStream};
    return SoundHandle(sf_open_virtual(&stream, mode, &info, file));
}
