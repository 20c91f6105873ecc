#include "fuzz/fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

void require(bool holds, const char* claim) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", claim);
        std::abort();
    }
}

std::uint8_t InputReader::byte() {
    const std::string_view one = text(1);
    return one.empty() ? 0 : static_cast<std::uint8_t>(one.front());
}

std::string_view InputReader::text(std::size_t count) {
    const Bytes taken = rest.first(std::min(count, rest.size()));
    rest = rest.subspan(taken.size());
    return {reinterpret_cast<const char*>(taken.data()), taken.size()};
}

// NOLINTNEXTLINE(readability-identifier-naming): the name that libFuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    fuzzOne({bytes, count});
    return 0;
}
