#pragma once

#include <stdexcept>

// What ends a command with exit status 1. The text is one line that says what is wrong, where, and
// what to do about it.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A run that whoever watches it has stopped. It ends a command with exit status 130.
class Stopped : public Failure {
public:
    using Failure::Failure;
};

// What is said where memory does not suffice.
constexpr const char* noMemoryLeft =
    "memory exhausted; convolve with --pad, or cut the signals with --per block --block N";
