#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"

#include <cstddef>

static constexpr PartProgram edfProgram = {"fendra-edf", "libedf", "libedf1", "libedf-dev"};

// By the version and, for EDF, whose version is a mere 0, by the first 256 bytes: letters alone,
// with the points of date and time.
static bool isEdf(std::string_view head) {
    constexpr std::size_t length = 256;
    if (head.starts_with("\377BIOSEMI")) {
        return true;
    }
    return head.starts_with("0       ") && head.size() >= length && head[170] == '.' &&
           head[173] == '.' && head[178] == '.' && head[181] == '.' &&
           head.substr(0, length).find_first_of("\r\n\t") == std::string_view::npos;
}

extern const Format edfFormat = {"EDF/BDF",
                                 {".edf", ".bdf"},
                                 Format::Kind::measurement,
                                 {},
                                 isEdf,
                                 openByProgram<edfProgram>,
                                 nullptr,
                                 Encoding::float64,
                                 partsByProgram<edfProgram>,
                                 &edfProgram};
