#pragma once

#include "workbench/analysis/Ends.h"

#include <cstdint>
#include <optional>

// A part of an axis, from and to included.
struct Span {
    double from = 0.0, to = 0.0;
};

// Where the zero of the kernel is taken to stand: a result belongs where the signal's axis has it
// only if the kernel's zero is known.
struct Origin {
    enum class Kind {
        automatic,  // by the kernel's axis; without one, a symmetric peak's maximum, else its start
        axis,       // by the kernel's axis, which it has to have
        maximum,    // where its magnitude is largest
        index,      // as given
        none        // the result stays as the module gives it
    };

    Kind kind = Kind::automatic;
    std::int64_t index = 0;
};

// What is known of the noise in a signal.
struct KnownNoise {
    enum class Kind {
        estimated,  // from the signal and the kernel
        sigma,      // a standard deviation, in units of the samples
        counts,     // samples are counts, whose variance is their mean
        stretch     // a part of the signal is nothing but noise
    };

    Kind kind = Kind::estimated;
    double sigma = 0.0;
    Span stretch;  // in units of the signal's axis
};

// What is done around the module: what it is run on, and what becomes of its result. By default the
// result is moved to where it belongs, and nothing else is done.
struct Treatment {
    Origin origin;
    bool automatic = false;    // the method and whatever is not given are chosen from the data
    std::optional<Ends> ends;  // how the signal goes on beyond its ends; none: periodic
    bool room = false;         // zeros, so that nothing wraps round
    int oversampling = 1;      // of signal and kernel; 0: chosen
    std::optional<double> strength;   // of the regularised division; none: chosen
    int order = 2;                    // of its penalty: 0 or 2
    std::optional<Span> frequencies;  // in Hz, outside which it suppresses all
    KnownNoise noise;
    bool uncertainty = false;  // a band, and the resolution
    std::optional<Span> keep;  // part of the result that is given, in units of its axis
    bool curve = false;        // all points of the search are kept
    bool warns = true;         // what is odd about the signal is looked for where nothing is chosen
};
