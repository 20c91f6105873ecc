#pragma once

#include <hdf5.h>
#include <stdexcept>

// What the library says where something fails.
struct Hdf5Error : std::runtime_error {
    using std::runtime_error::runtime_error;

    // The innermost reason of the call that has just failed, in its words.
    static Hdf5Error latest();
};

// An identifier of the library, closed when the object goes.
class Hdf5Handle {
public:
    using Close = herr_t (*)(hid_t);

    // Hdf5Error if the identifier is that of a failure.
    Hdf5Handle(hid_t identifier, Close closeIt);
    Hdf5Handle(Hdf5Handle&& other) noexcept;
    Hdf5Handle(const Hdf5Handle&) = delete;
    Hdf5Handle& operator=(Hdf5Handle&& other) noexcept;
    Hdf5Handle& operator=(const Hdf5Handle&) = delete;
    ~Hdf5Handle();

    [[nodiscard]] hid_t get() const { return id; }

private:
    hid_t id;
    Close close;
};

// Throws Hdf5Error where a call has failed; else its result.
template <typename Result>
Result succeeded(Result result) {
    if (result < 0) {
        throw Hdf5Error::latest();
    }
    return result;
}
