#pragma once

#include "workbench/parts/mat/MatFile.h"
#include "workbench/parts/mat/MatNumbers.h"
#include "workbench/signals/SignalReader.h"

#include <cstdint>
#include <string>
#include <vector>

// A matrix of numbers of a MAT file. It is read some rows at a time, in constant memory, unless it
// is packed in a file of version 5: then the library has to read it as a whole.
class MatReader final : public SignalReader {
public:
    // options.part is a variable that signalRefusal lets through.
    MatReader(const std::string& path, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void describe(const ReadOptions& options);
    void setAxis();
    void fill();
    std::int64_t take(double* interleaved, std::int64_t most);
    void readValues(std::int64_t first, std::int64_t count);
    void requireExact(std::int64_t first, std::int64_t count) const;

    MatFile file;
    VariableHandle variable;
    const MatNumbers* numbers;
    bool isRow, lossy;
    std::int64_t blockLength;    // samples that are read at a time
    std::vector<char> values;    // of them, channel after channel, as the library gives them
    std::vector<double> column;  // some of a channel
    std::int64_t position = 0;   // of the sample that is asked for next
    std::int64_t blockBegin = 0, blockEnd = 0;
};

// "64-bit float, 48000 x 2"
std::string kindOf(const matvar_t& variable);
// Why a variable is no signal, a whole line; empty: it is one. name: the file and the variable.
std::string signalRefusal(const matvar_t& variable, const std::string& name);
