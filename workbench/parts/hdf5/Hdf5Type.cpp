#include "workbench/parts/hdf5/Hdf5Type.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/hdf5/Hdf5Handle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

// Values that are not samples, and what to save in their place.
struct Refused {
    H5T_class_t kind;
    const char* what;
    const char* instead;
};

}  // namespace

static constexpr std::array refusedKinds = {
    Refused{H5T_COMPOUND, "compound records", "one of their members as a dataset"},
    Refused{H5T_STRING, "text", "a dataset of numbers"},
    Refused{H5T_REFERENCE, "references", "what they refer to"},
    Refused{H5T_VLEN, "rows of different lengths", "each of them as a dataset"},
    Refused{H5T_ARRAY, "arrays as values", "them as further dimensions"},
    Refused{H5T_OPAQUE, "opaque bytes", "a dataset of numbers"},
    Refused{H5T_BITFIELD, "bit fields", "them as integers"},
    Refused{H5T_TIME, "dates or times", "them as numbers of seconds"}};

[[noreturn]] static void refuse(const std::string& name, const char* what, const char* instead) {
    throw Failure(fmt::format("{} holds {}, which are not samples; save {}", name, what, instead));
}

// A compound of two floats, as complex numbers are stored.
static bool isComplex(hid_t type) {
    return H5Tget_class(type) == H5T_COMPOUND && H5Tget_nmembers(type) == 2 &&
           H5Tget_member_class(type, 0) == H5T_FLOAT && H5Tget_member_class(type, 1) == H5T_FLOAT;
}

// The library reads past a value of which some bits, so many up to the last, are none of its own.
static void requireWithin(hid_t type, std::size_t bits, const std::string& name) {
    const int offset = H5Tget_offset(type);
    if (offset < 0 || bits == 0 ||
        static_cast<std::size_t>(offset) + bits > 8 * H5Tget_size(type)) {
        throw Failure(fmt::format(
            "{} is damaged: its numbers are longer than their bytes; copy the file again", name));
    }
}

// One whose values all are doubles.
static Hdf5Type floatOf(hid_t type, const std::string& name) {
    std::size_t sign = 0, exponent = 0, exponentBits = 0, fraction = 0, fractionBits = 0;
    succeeded(H5Tget_fields(type, &sign, &exponent, &exponentBits, &fraction, &fractionBits));
    const std::size_t bits = H5Tget_precision(type);
    requireWithin(
        type, std::max({bits, sign + 1, exponent + exponentBits, fraction + fractionBits}), name);
    if (bits > 64 || exponentBits > 11 || fractionBits > 52) {
        refuse(name, "long double numbers", "them as float64");
    }
    return {fmt::format("{}-bit float", bits), bits <= 32};
}

static Hdf5Type integerOf(hid_t type, const std::string& name) {
    const std::size_t bits = H5Tget_precision(type);
    requireWithin(type, bits, name);
    if (bits > 64) {
        refuse(name, "integers of more than 64 bits", "them as float64");
    }
    const bool hasSign = H5Tget_sign(type) != H5T_SGN_NONE;
    return {fmt::format("{}-bit integer{}", bits, hasSign ? "" : " without sign"), false,
            bits <= 53 ? H5I_INVALID_HID
            : hasSign  ? H5T_NATIVE_INT64
                       : H5T_NATIVE_UINT64};
}

static std::string memberName(hid_t type, unsigned index) {
    char* const member = H5Tget_member_name(type, index);
    std::string name(member == nullptr ? "" : member);
    H5free_memory(member);
    return name;
}

// Truth values, as some programs store them.
static bool isTruth(hid_t type) {
    return H5Tget_nmembers(type) == 2 && memberName(type, 0) == "FALSE" &&
           memberName(type, 1) == "TRUE";
}

Hdf5Type Hdf5Type::of(hid_t type, const std::string& name) {
    const H5T_class_t kind = succeeded(H5Tget_class(type));
    if (kind == H5T_FLOAT) {
        return floatOf(type, name);
    }
    if (kind == H5T_INTEGER) {
        return integerOf(type, name);
    }
    if (kind == H5T_ENUM) {
        const Hdf5Handle base(H5Tget_super(type), H5Tclose);
        Hdf5Type values = integerOf(base.get(), name);
        values.name = isTruth(type) ? "truth value" : values.name + " with names";
        return values;
    }
    if (isComplex(type)) {
        refuse(name, "complex numbers", "the real part, the imaginary part or the magnitude");
    }
    const auto* row = std::find_if(refusedKinds.begin(), refusedKinds.end(),
                                   [kind](const Refused& each) { return each.kind == kind; });
    refuse(name, row == refusedKinds.end() ? "values of an unknown type" : row->what,
           row == refusedKinds.end() ? "a dataset of numbers" : row->instead);
}
