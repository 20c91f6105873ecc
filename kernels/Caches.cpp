#include "kernels/Caches.h"

#include <array>
#include <fstream>
#include <string>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace kernels {

using Sizes = std::array<std::size_t, 4>;  // by level, from 1 on

#if defined(__x86_64__) || defined(__i386__)
// The list of caches: leaf 4 of processors by Intel, leaf 0x8000001d, of the same form, by AMD.
static Sizes sizesByProcessor() {
    unsigned a = 0, b = 0, c = 0, d = 0;
    constexpr unsigned topologyExtensions = 1U << 22U;
    const bool hasExtended =
        __get_cpuid(0x80000001, &a, &b, &c, &d) != 0 && (c & topologyExtensions) != 0;
    const unsigned leaf = hasExtended ? 0x8000001d : 4;
    Sizes sizes{};
    for (unsigned cache = 0; __get_cpuid_count(leaf, cache, &a, &b, &c, &d) != 0; ++cache) {
        const unsigned kind = a & 0x1fU, level = a >> 5U & 0x7U;
        constexpr unsigned none = 0, instructions = 2;
        if (kind == none) {
            break;
        }
        if (kind != instructions && level < sizes.size()) {
            const std::size_t ways = (b >> 22U) + 1, partitions = (b >> 12U & 0x3ffU) + 1,
                              line = (b & 0xfffU) + 1, sets = std::size_t{c} + 1;
            sizes[level] = ways * partitions * line * sets;
        }
    }
    return sizes;
}
#else
// What Linux lists; nothing elsewhere.
static Sizes sizesByProcessor() {
    Sizes sizes{};
    for (int cache = 0; cache < 8; ++cache) {
        const std::string folder =
            "/sys/devices/system/cpu/cpu0/cache/index" + std::to_string(cache) + "/";
        std::size_t level = 0, kilobytes = 0;
        std::string kind;
        std::ifstream(folder + "level") >> level;
        std::ifstream(folder + "type") >> kind;
        std::ifstream(folder + "size") >> kilobytes;
        if (kind != "Instruction" && level < sizes.size()) {
            sizes[level] = kilobytes * 1024;
        }
    }
    return sizes;
}
#endif

static Caches find() {
    const Sizes sizes = sizesByProcessor();
    Caches found{32768, 262144, 0};
    if (sizes[1] != 0) {
        found.firstLevel = sizes[1];
    }
    if (sizes[2] != 0) {
        found.secondLevel = sizes[2];
    }
    found.thirdLevel = sizes[3] != 0 ? sizes[3] : found.secondLevel;
    return found;
}

const Caches& caches() {
    static const Caches found = find();
    return found;
}

}  // namespace kernels
