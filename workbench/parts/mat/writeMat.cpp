#include "workbench/parts/mat/writeMat.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/mat/MatExtent.h"
#include "workbench/parts/mat/MatFile.h"
#include "workbench/parts/mat/MatText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <vector>

static constexpr const char* signalName = "signal";

namespace {

// A new file, and what is written into it. Failure of each operation if it cannot be written.
class NewMatFile {
public:
    NewMatFile(const std::string& path, const SourceName& target);
    NewMatFile(const NewMatFile&) = delete;
    NewMatFile& operator=(const NewMatFile&) = delete;
    ~NewMatFile() { Mat_Close(mat); }

    void put(const char* name, double number);
    void put(const char* name, const std::string& text);
    void put(const char* name, const std::vector<std::string>& texts);
    // values: column by column; they are not copied.
    void put(const char* name, std::vector<double>& values, std::int64_t rows);
    void put(const char* name, std::vector<float>& values, std::int64_t rows);

    [[noreturn]] void fail() const;

private:
    void write(const VariableHandle& variable);
    template <typename Value>
    void putMatrix(const char* name, matio_classes kind, matio_types type,
                   std::vector<Value>& values, std::int64_t rows);

    std::string shown;
    mat_t* mat;
};

}  // namespace

// Without the time of day, which is in the library's own header: the same signal gives the same
// bytes.
NewMatFile::NewMatFile(const std::string& path, const SourceName& target)
    : shown(target.shown),
      mat(Mat_CreateVer(path.c_str(), "MATLAB 5.0 MAT-file, written by Fendra", MAT_FT_MAT5)) {
    if (mat == nullptr) {
        fail();
    }
}

void NewMatFile::fail() const {
    throw Failure(fmt::format("cannot write {}: {}; make room or choose another place", shown,
                              errno == 0 ? "write error" : std::generic_category().message(errno)));
}

void NewMatFile::write(const VariableHandle& variable) {
    errno = 0;
    if (variable == nullptr || Mat_VarWrite(mat, variable.get(), MAT_COMPRESSION_NONE) != 0) {
        fail();
    }
}

void NewMatFile::put(const char* name, double number) {
    std::vector<double> value = {number};
    put(name, value, 1);
}

// A single row of letters; name null: of a cell.
static matvar_t* textVariable(const char* name, const std::string& text) {
    std::u16string letters = lettersOf(text);
    std::array<std::size_t, 2> shape = {letters.empty() ? std::size_t{0} : 1, letters.size()};
    return Mat_VarCreate(name, MAT_C_CHAR, MAT_T_UINT16, 2, shape.data(), letters.data(), 0);
}

void NewMatFile::put(const char* name, const std::string& text) {
    write(VariableHandle(textVariable(name, text)));
}

void NewMatFile::put(const char* name, const std::vector<std::string>& texts) {
    std::vector<matvar_t*> cells;
    cells.reserve(texts.size());
    for (const std::string& text : texts) {
        cells.push_back(textVariable(nullptr, text));
    }
    std::array<std::size_t, 2> shape = {1, cells.size()};
    write(VariableHandle(  // which owns the cells
        Mat_VarCreate(name, MAT_C_CELL, MAT_T_CELL, 2, shape.data(), cells.data(), 0)));
}

template <typename Value>
void NewMatFile::putMatrix(const char* name, matio_classes kind, matio_types type,
                           std::vector<Value>& values, std::int64_t rows) {
    const auto length = static_cast<std::size_t>(rows);
    std::array<std::size_t, 2> shape = {length, values.size() / length};
    write(VariableHandle(
        Mat_VarCreate(name, kind, type, 2, shape.data(), values.data(), MAT_F_DONT_COPY_DATA)));
}

void NewMatFile::put(const char* name, std::vector<double>& values, std::int64_t rows) {
    putMatrix(name, MAT_C_DOUBLE, MAT_T_DOUBLE, values, rows);
}

void NewMatFile::put(const char* name, std::vector<float>& values, std::int64_t rows) {
    putMatrix(name, MAT_C_SINGLE, MAT_T_SINGLE, values, rows);
}

static void requireRoom(const SignalInfo& info, std::int64_t sampleBytes,
                        const SourceName& target) {
    constexpr std::int64_t most = (std::int64_t{1} << 31U) - (1 << 16);  // bytes of a variable
    if (info.samples > most / sampleBytes / info.channels) {
        throw Failure(
            fmt::format("{}: a variable of such a file has 2 GB at most; write an array, "
                        "as with -o FILE.npy",
                        target.shown));
    }
    if (info.samples == 1) {
        throw Failure(
            fmt::format("{}: a single sample is read as a number or as one signal; write "
                        "text, as with -o FILE.csv",
                        target.shown));
    }
}

template <typename Value>
static void putSignal(NewMatFile& file, SignalReader& samples) {
    const std::int64_t rows = samples.info().samples, channels = samples.info().channels;
    std::vector<Value> columns(static_cast<std::size_t>(rows * channels));
    const std::int64_t most = std::max<std::int64_t>(1, 65536 / channels);
    std::vector<double> block(static_cast<std::size_t>(most * channels));
    std::int64_t done = 0;
    while (const std::int64_t got = samples.read(block.data(), most)) {
        for (std::int64_t i = 0; i < got * channels; ++i) {
            const std::int64_t at = i % channels * rows + done + i / channels;
            columns[static_cast<std::size_t>(at)] =
                static_cast<Value>(block[static_cast<std::size_t>(i)]);
        }
        done += got;
    }
    file.put(signalName, columns, rows);
}

static void putFacts(NewMatFile& file, const ResultInfo& info) {
    if (info.rate > 0.0) {
        file.put("fs", info.rate);
    }
    if (info.axis) {
        file.put("axis_name", info.axis->name);
        file.put("axis_start", info.axis->start);
        file.put("axis_step", info.axis->step);
    }
    if (!info.columnNames.empty()) {
        file.put("names", info.columnNames);
    }
    if (!info.notes.empty()) {
        file.put("notes", fmt::format("{}", fmt::join(info.notes, "\n")));
    }
}

void writeMat(const std::string& path, SignalReader& samples, const SignalTarget& target,
              const ResultInfo& info) {
    const bool narrow = target.encoding == Encoding::float32;
    requireRoom(samples.info(), narrow ? 4 : 8, target.name);
    {
        NewMatFile file(path, target.name);
        putFacts(file, info);
        if (narrow) {
            putSignal<float>(file, samples);
        } else {
            putSignal<double>(file, samples);
        }
    }
    try {  // the library does not say that a disk is full
        requireNumbers(path, signalName, target.name);
    } catch (const Failure&) {
        throw Failure(
            fmt::format("cannot write {}; make room or choose another place", target.name.shown));
    }
}
