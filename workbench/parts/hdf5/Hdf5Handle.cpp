#include "workbench/parts/hdf5/Hdf5Handle.h"

#include "workbench/messages/Printable.h"

#include <string>
#include <utility>

static herr_t takeFirst(unsigned /*position*/, const H5E_error2_t* error, void* text) {
    auto& reason = *static_cast<std::string*>(text);
    if (reason.empty() && error->desc != nullptr) {
        reason = error->desc;
    }
    return 0;
}

Hdf5Error Hdf5Error::latest() {
    std::string reason;
    H5Ewalk2(H5E_DEFAULT, H5E_WALK_UPWARD, takeFirst, &reason);
    Hdf5Error error(reason.empty() ? "unknown error" : printable(reason, 200));
    return error;
}

Hdf5Handle::Hdf5Handle(hid_t identifier, Close closeIt)
    : id(succeeded(identifier)), close(closeIt) {}

Hdf5Handle::Hdf5Handle(Hdf5Handle&& other) noexcept
    : id(std::exchange(other.id, H5I_INVALID_HID)), close(other.close) {}

Hdf5Handle& Hdf5Handle::operator=(Hdf5Handle&& other) noexcept {
    std::swap(id, other.id);
    std::swap(close, other.close);
    return *this;
}

Hdf5Handle::~Hdf5Handle() {
    if (id >= 0) {
        close(id);
    }
}
