#pragma once

// By how much a result is scaled before it is written.
struct Gain {
    enum class Kind {
        none,
        decibels,  // every sample times factorOf(decibels)
        normalize  // every sample divided by the largest magnitude, which becomes 1.0 exactly
    };
    static constexpr double most = 300.0;  // dB, either way

    Kind kind = Kind::none;
    double decibels = 0.0;
};

// 10^(decibels / 20): a power of ten for every 20 dB, and a series for the rest. It takes nothing
// from the C library, so a result has the same bits on every system. Within some 1e-15 of itself,
// up to Gain::most.
double factorOf(double decibels);

// 20 log10(factor), for people.
double decibelsOf(double factor);
