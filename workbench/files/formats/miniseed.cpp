#include "workbench/files/Format.h"
#include "workbench/files/parts/formatPart.h"

#include <cstddef>
#include <cstdint>

static constexpr PartProgram miniseedProgram = {"fendra-mseed", "libmseed", "libmseed2",
                                                "libmseed-dev"};

static bool isBelow(std::string_view head, std::size_t at, int end) {
    return static_cast<std::uint8_t>(head[at]) < end;
}

// By the fixed header of a record: a number of six digits, the quality of the data, a blank, and
// 24, 60 and 61 as bounds of the time of day.
static bool isMiniseed(std::string_view head) {
    using namespace std::string_view_literals;
    constexpr std::size_t fixedHeader = 48;
    const auto within = [&head](std::size_t begin, std::size_t end, std::string_view letters) {
        return head.substr(begin, end - begin).find_first_not_of(letters) == std::string_view::npos;
    };
    return head.size() >= fixedHeader && within(0, 6, "0123456789 \0"sv) && within(6, 7, "DRQM") &&
           within(7, 8, " \0"sv) && isBelow(head, 24, 24) && isBelow(head, 25, 60) &&
           isBelow(head, 26, 61);
}

extern const Format miniseedFormat = {"miniSEED",
                                      {".mseed"},
                                      Format::Kind::measurement,
                                      {},
                                      isMiniseed,
                                      openByProgram<miniseedProgram>,
                                      nullptr,
                                      Encoding::float64,
                                      partsByProgram<miniseedProgram>,
                                      &miniseedProgram};
