#pragma once

#include "workbench/files/disk/FileStream.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalWriter.h"

#include <memory>
#include <string>

// Audio files. Where the library of audio is not to be had, both are a Failure that says so.

enum class AudioContainer { wav, w64, rf64, aiff, flac };

// As openSignal and createSignal, which tell audio from text.
std::unique_ptr<SignalReader> openAudio(FileHandle audio, const SourceName& source,
                                        const ReadOptions& options);
std::unique_ptr<SignalWriter> createAudio(const SourceName& output, bool replace,
                                          AudioContainer container, Encoding encoding,
                                          const ResultInfo& info);
