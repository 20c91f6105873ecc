#pragma once

#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SignalSource.h"
#include "workbench/signals/SignalWriter.h"

#include <memory>
#include <vector>

// Opens a signal and reads it once, so that any fault in it is found here.
//   source    A file, or a signal within one (SourcePart). Standard input and pipes are first
//             copied to a temporary file.
//   Audio     (recognised by its first bytes) is scaled to 1.0 at full scale; floating-point
//             samples stay as they are.
//   Text      is columns of numbers separated by tabs, semicolons, commas or blanks, after lines of
//             comment (# or %), titles or pairs of key and value, a header line and one of units,
//             as far as there are such (TextLayout). Its options tell what cannot be recognised.
//             Moments (ClockTime) are read as seconds. One column may be the axis, which gives a
//             rate if its name is that of a time: chosen by the options, or the first, if it is
//             evenly spaced as far as its digits show and no other is (AxisSearch). All others, or
//             those chosen, are channels.
//   Failure   unreadable, empty or truncated, not a number, uneven axis, a chosen column that does
//             not exist, NaN or infinity.
std::unique_ptr<SignalReader> openSignal(const SourceName& source, const ReadOptions& options);

// The same, but text from a pipe is read as it comes, where its columns are known by its first
// lines: a single one by two, several by 64 of which none rises or falls all along and may thus be
// the axis. Until its end info().samples is 0, and read may throw a Failure about each further
// line.
std::unique_ptr<SignalReader> openStream(const SourceName& source, const ReadOptions& options);

// The parts of a file of a format that can hold several signals; none of another, of a pipe, and
// where the name is that of a part. Failure if the file cannot be read, or is of no format.
std::vector<FilePart> partsOf(const SourceName& source);

// The file of that path as a source: it is opened, with these options, when it is needed.
SignalSource fileSource(const std::string& path, const ReadOptions& options);

// Whether the format of a target holds columns of any meaning, as text does, or channels alone.
// Failure as createSignal.
bool holdsColumns(const SourceName& target);

// How the samples of a target are stored; float64 where they are read again as they were, bit for
// bit, as from text. Failure as createSignal.
Encoding storedEncoding(const SignalTarget& target);

// What of a signal has no place in the format of a target, "the rate of 8000 Hz and the names of
// the channels"; empty if all has. Failure as createSignal.
std::string withoutPlace(const SignalTarget& target, const ResultInfo& info);

// Creates a file for a signal in the format that the ending of its name stands for; standard output
// is text.
//   Audio     needs a rate of whole Hz. A .wav beyond 4 GiB is RF64.
//   Text      separated by commas, tabs (.tsv) or blanks (.txt, .dat, .xy): the notes, a header
//             line, then the samples, each number in the fewest digits that read back to it. A rate
//             gives a first column t_s in seconds, an axis without a rate a column of its own name.
//   Array     is of 64-bit floats, samples by channels, without rate, axis and names.
//   UFF       is of 64-bit floats, a dataset 58b for each channel, with axis, names and units.
//   SAC       is of 32-bit floats, of one channel with a rate; other samples need a lossy target.
//   Failure   a format that cannot hold the signal; one without a place for an axis that is not a
//             time, unless the target is lossy; an existing file, no right to write.
std::unique_ptr<SignalWriter> createSignal(const SignalTarget& target, const ResultInfo& info);
