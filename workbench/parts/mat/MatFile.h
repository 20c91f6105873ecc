#pragma once

#include "workbench/signals/SourceName.h"

#include <cstdint>
#include <matio.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct VariableFreer {
    void operator()(matvar_t* variable) const { Mat_VarFree(variable); }
};
using VariableHandle = std::unique_ptr<matvar_t, VariableFreer>;

// An open MAT file of version 5 or 7.3.
//
// Any matrix of numbers is a signal, its rows the samples and its columns the channels, or a single
// row one channel. Such a file has no place for anything else, so other variables stand for it,
// where they are there:
//     fs                     scalar: the rate of all signals, in Hz
//     axis_start, axis_step  scalars: where their first sample stands and how far it is to the
//     next,
//                            in seconds if there is fs as well
//     axis_name              text: what that is
//     names                  cell array or rows of text, one a channel: "voltage (mV)"
//     notes                  text: how the signal came about, in lines
// When a signal is written, its name is signal.
class MatFile {
public:
    // Failure if the library does not open the file.
    MatFile(const std::string& path, const SourceName& file);

    [[nodiscard]] mat_t* handle() const { return mat.get(); }
    [[nodiscard]] bool isHdf5() const { return Mat_GetVersion(mat.get()) == MAT_FT_MAT73; }

    // A variable without its values: the next one of the file, or that of a name. Null: none.
    [[nodiscard]] VariableHandle next() const {
        return VariableHandle(Mat_VarReadNextInfo(handle()));
    }
    [[nodiscard]] VariableHandle named(const char* variable) const;

    // Its value, if the variable is there, and is a real scalar.
    [[nodiscard]] std::optional<double> number(const char* variable) const;
    // The texts of its cells or rows, if the variable is there, and holds texts.
    [[nodiscard]] std::vector<std::string> texts(const char* variable) const;

private:
    struct Closer {
        void operator()(mat_t* open) const { Mat_Close(open); }
    };
    std::unique_ptr<mat_t, Closer> mat;
};

// "6 x 2"
std::string shapeOf(const matvar_t& variable);
// The product of its dimensions; -1 if it is beyond what a file can hold.
std::int64_t elementsOf(const matvar_t& variable);
