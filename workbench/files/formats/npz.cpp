#include "workbench/files/array/npz.h"

#include "workbench/files/Format.h"

static bool isNpz(std::string_view head) {
    return head.starts_with("PK\3\4") || head.starts_with("PK\5\6");
}

extern const Format npzFormat = {"npz",   {".npz"}, Format::Kind::measurement, {},        isNpz,
                                 openNpz, nullptr,  Encoding::float64,         partsOfNpz};
