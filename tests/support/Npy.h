#pragma once

#include <initializer_list>
#include <string>

inline std::string bytesOf(std::initializer_list<int> bytes) {
    return {bytes.begin(), bytes.end()};
}

// An array as NumPy writes it, in the version of the format that is asked for.
inline std::string npy(const std::string& type, const std::string& shape, const std::string& values,
                       bool byColumns = false, int version = 1) {
    std::string header = "{'descr': " + type +
                         ", 'fortran_order': " + (byColumns ? "True" : "False") +
                         ", 'shape': " + shape + ", }";
    const std::size_t before = version == 1 ? 10 : 12;
    header.resize((before + header.size() + 64) / 64 * 64 - before - 1, ' ');
    header += '\n';
    std::string file = "\x93NUMPY";
    file += {static_cast<char>(version), 0, static_cast<char>(header.size() & 0xffU),
             static_cast<char>(header.size() >> 8U)};
    return file + std::string(before - 10, '\0') + header + values;
}
