#include "workbench/files/audio/SoundStream.h"

#include "workbench/system/FileHandle.h"

#include <algorithm>

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

static std::string nameOf(const SF_FORMAT_INFO& container) {
    std::string name = container.extension;
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    });
    return name;
}

std::string containerName(int format) {
    SF_FORMAT_INFO container = {};
    container.format = format & SF_FORMAT_TYPEMASK;
    const int status = sf_command(nullptr, SFC_GET_FORMAT_INFO, &container, sizeof container);
    return status == 0 ? nameOf(container) : "audio";
}

// Of several containers with one ending the library has the usual one first.
int containerCode(std::string_view name) {
    int count = 0;
    sf_command(nullptr, SFC_GET_FORMAT_MAJOR_COUNT, &count, sizeof count);
    for (int i = 0; i < count; ++i) {
        SF_FORMAT_INFO container = {};
        container.format = i;
        sf_command(nullptr, SFC_GET_FORMAT_MAJOR, &container, sizeof container);
        if (nameOf(container) == name) {
            return container.format;
        }
    }
    return 0;
}
