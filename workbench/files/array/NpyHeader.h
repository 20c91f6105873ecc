#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// What stands before the samples in an .npy file: the type of the values, their order and how many
// there are, as the literal of a Python dictionary (NumPy Enhancement Proposal 1, "A Simple File
// Format for NumPy Arrays", 2007; versions 1 to 3 differ in the length and letters of the header).
struct NpyHeader {
    static constexpr std::string_view mark = "\x93NUMPY";

    // The next bytes of the file, up to so many; fewer only at its end.
    using ReadBytes = std::function<std::size_t(char* to, std::size_t most)>;

    // Reads the header of an array of one or two dimensions, and leaves the file at its samples.
    //   available  bytes of the file, from its mark to its end
    //   name       of the file, for messages
    //   Failure    not such a header; values that are no real numbers of up to 64 bits; no samples,
    //              or not as many as it declares
    static NpyHeader read(const ReadBytes& next, std::int64_t available, const std::string& name);

    [[nodiscard]] int channels() const { return static_cast<int>(columns); }
    // "64-bit float", "truth value"
    [[nodiscard]] std::string typeName() const;
    // "1000", "1000 x 2"
    [[nodiscard]] std::string shapeName() const;

    char kind = 'f';  // b truth values, i integers, u integers without sign, f floating point
    int bytes = 8;    // of a value
    bool bigEndian = false;
    bool byColumns = false;  // values that follow each other stand in a column, not in a row

    // Rows are samples, columns channels; a single row is one signal.
    std::int64_t rows = 0, columns = 1;
    std::int64_t length = 0;  // of the header, in bytes: the samples begin there
};
