#pragma once

#include <cstddef>
#include <vector>

// What a recording is taken to be beyond its first and last sample, before it is deconvolved as if
// it were periodic. With the N samples x[0] .. x[N-1]:
enum class Ends {
    periodic,  // x[i] = x[i mod N]: nothing is added
    zero,      // x[i] = 0: the recording begins and ends at nothing, as a decay in a room does
    odd,       // x[-i] = 2 x[0] - x[i], and x[N-1+i] = 2 x[N-1] - x[N-1-i]: value and slope go on
    bridge     // from the last sample to the first, half a cosine
};

// How many samples are added at each end.
struct EndRoom {
    std::size_t before = 0, after = 0;
};

// The room that a kernel takes, so that one end of the signal does not reach the other.
//   signalLength   N, 1 or more
//   support        of the kernel, in samples; see supportOf
//   returns        periodic none; zero support - 1 after; odd support on both sides, at most N - 1,
//                  since there is no more to reflect; bridge support after.
EndRoom roomFor(Ends ends, std::size_t signalLength, std::size_t support);

// The signal with these ends, room.before samples earlier and room.after later; the signal itself
// is untouched in between. A straight line goes on straight with odd ends, to the last bit where
// its values are whole numbers. signal: 1 sample or more. room: as by roomFor; with zero ends any.
std::vector<double> extended(const std::vector<double>& signal, Ends ends, EndRoom room);

// Whether first and last sample differ by more than five standard deviations of the noise, so that
// periodic ends make a step of them. sigma: in units of the samples.
bool endsDiffer(const std::vector<double>& signal, double sigma);

// Whether the signal, taken as periodic, is far rougher where its ends meet than inside: the third
// difference over the last two and the first two samples is above five times the root mean square
// of those of all other neighbours. A whole period is as smooth there as anywhere, however much
// its first and last sample differ.
bool meetsRoughly(const std::vector<double>& signal);
