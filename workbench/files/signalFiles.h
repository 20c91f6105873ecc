#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalSource.h"
#include "workbench/signals/SignalWriter.h"

#include <memory>
#include <string>

// Opens a signal and goes through it once, so that whatever is wrong with it comes to light here.
//   source    Standard input and pipes are first copied to a temporary file.
//   Audio     (WAV, W64, RF64, AIFF, FLAC, known by its first bytes) is scaled to 1.0 at full
//             scale; floating-point samples stay as they are.
//   Text      is columns of numbers separated by tabs, semicolons, commas or blanks, after lines of
//             comment (#) and at most one header line. A first column that the header calls a time
//             or an axis gives rate and axis; the other columns are channels.
//   Failure   unreadable, empty or cut off, not a number, uneven axis, NaN or infinity.
std::unique_ptr<SignalReader> openSignal(const SourceName& source, const ReadOptions& options);

// The file of that path as a source: it is opened, with these options, when it is needed.
SignalSource fileSource(const std::string& path, const ReadOptions& options);

// Creates the file of that path for a signal, in the format that the ending of its name stands for;
// "-" is text on standard output.
//   .wav .w64 .rf64 .aif .aiff .flac   audio, at a rate of whole Hz. A .wav beyond 4 GiB is RF64.
//   .csv .tsv .txt .dat                text, separated by commas, tabs, blanks, blanks: the notes,
//                                      a header line, then the samples, each number in the fewest
//                                      digits that give it back. A rate gives a first column t_s in
//                                      seconds, an axis without a rate a column of its own name.
//   replace   An existing file may be replaced.
//   Failure   a format that cannot hold the signal, an existing file, no right to write.
std::unique_ptr<SignalWriter> createSignal(const std::string& path, bool replace, Encoding encoding,
                                           const ResultInfo& info);
