#pragma once

#include <sndfile.h>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

struct SoundCloser {
    void operator()(SNDFILE* sound) const { sf_close(sound); }
};
using SoundHandle = std::unique_ptr<SNDFILE, SoundCloser>;

// Opens the audio in a file that can be sought in; mode and info as for sf_open. The file stays the
// caller's, open at least as long as the handle. Null if the library refuses: sf_strerror(nullptr).
SoundHandle openSound(std::FILE* file, int mode, SF_INFO& info);

// The container of a format code, as the library's usual ending of a name in capitals: "WAV"; and
// the code for such a name, 0 if the library does not have it.
std::string containerName(int format);
int containerCode(std::string_view name);
