#include "workbench/parts/mat/MatReader.h"

#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/parts/mat/MatExtent.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace {

// A class of variables that are no signals.
struct OtherClass {
    matio_classes id;
    const char* name;
    const char* refusal;  // after the variable's name
};

}  // namespace

static const OtherClass& otherClass(matio_classes id) {
    static constexpr std::array rows = {
        OtherClass{MAT_C_EMPTY, "unknown",
                   "is of a class that is not known; save it as a matrix of numbers"},
        OtherClass{MAT_C_CHAR, "text", "is text, not a signal; choose a matrix of numbers"},
        OtherClass{MAT_C_CELL, "cell array",
                   "is a cell array, not a signal; save what is in a cell as a matrix"},
        OtherClass{MAT_C_STRUCT, "structure",
                   "is a structure, not a signal; save one of its fields as a matrix"},
        OtherClass{MAT_C_SPARSE, "sparse matrix",
                   "is a sparse matrix, which is not read; save it as a full one"},
        OtherClass{MAT_C_FUNCTION, "function", "is a function, not a signal; save its values"},
        OtherClass{MAT_C_OPAQUE, "object",
                   "is an object, which is not read; save its numbers as a "
                   "matrix"}};
    const auto* const found = std::find_if(rows.begin(), rows.end(),
                                           [id](const OtherClass& each) { return each.id == id; });
    return found == rows.end() ? rows.back() : *found;
}

static std::string typeOf(const matvar_t& variable) {
    const MatNumbers* const numbers = MatNumbers::of(variable.class_type);
    return numbers == nullptr        ? otherClass(variable.class_type).name
           : variable.isLogical != 0 ? "truth value"
           : variable.isComplex != 0 ? fmt::format("complex {}", numbers->name)
                                     : numbers->name;
}

std::string kindOf(const matvar_t& variable) {
    return fmt::format("{}, {}", typeOf(variable), shapeOf(variable));
}

std::string signalRefusal(const matvar_t& variable, const std::string& name) {
    if (MatNumbers::of(variable.class_type) == nullptr) {
        return fmt::format("{} {}", name, otherClass(variable.class_type).refusal);
    }
    const std::int64_t elements = elementsOf(variable);
    if (variable.isComplex != 0) {
        return name +
               " holds complex numbers, which are not samples; save the real part, the "
               "imaginary part or the magnitude";
    }
    if (elements == 0) {
        return name + " holds no samples; choose another variable";
    }
    if (variable.rank != 2) {
        return fmt::format("{} has {} dimensions, {}; save two of them, samples and channels", name,
                           variable.rank, shapeOf(variable));
    }
    if (elements == 1) {
        return name + " is a single number, not a signal; choose another variable";
    }
    constexpr std::size_t most = std::numeric_limits<int>::max();  // that the library counts
    if (variable.dims[0] > most || variable.dims[1] > most) {
        return fmt::format("{} has too many samples or channels, {}; save it in parts", name,
                           shapeOf(variable));
    }
    return "";
}

static std::int64_t lengthOf(const std::string& path) {
    const FileHandle file = openFile(path, "rb");
    return file != nullptr && seekFile(file.get(), 0, SEEK_END) ? filePosition(file.get()) : 0;
}

// The variable, which is complete as far as can be told before it is read.
static VariableHandle wholeVariable(const MatFile& file, const std::string& path,
                                    const std::string& name, const SourceName& source) {
    VariableHandle variable = file.named(name.c_str());
    const std::string refusal =
        variable == nullptr
            ? fmt::format("{}: there is no {} in the file", source.shown, printable(name, 100))
            : signalRefusal(*variable, source.shown);
    if (!refusal.empty()) {
        throw Failure(refusal);
    }
    if (!file.isHdf5()) {
        requireNumbers(path, name, source);
    }
    constexpr std::int64_t mostExpansion = 1032;  // of deflate, in which most bytes may be zeros
    if (elementsOf(*variable) / mostExpansion > lengthOf(path)) {
        throw Failure(
            fmt::format("{}: {} has {} values, for which the file is too short; copy it "
                        "again",
                        source.shown, printable(name, 100), shapeOf(*variable)));
    }
    return variable;
}

MatReader::MatReader(const std::string& path, const SourceName& source, const ReadOptions& options)
    : file(path, source),
      variable(wholeVariable(file, path, options.part, source)),
      numbers(MatNumbers::of(variable->class_type)),
      isRow(variable->dims[0] == 1),
      lossy(options.lossy) {
    facts.source = source;
    describe(options);
    const bool asWhole = !file.isHdf5() && variable->compression == MAT_COMPRESSION_ZLIB;
    constexpr std::int64_t mostValues = 1 << 20;
    blockLength = asWhole ? facts.samples : std::max<std::int64_t>(1, mostValues / facts.channels);
}

void MatReader::describe(const ReadOptions& options) {
    const auto rows = static_cast<std::int64_t>(variable->dims[0]);
    const auto columns = static_cast<int>(variable->dims[1]);
    facts.format = fmt::format("MAT {}, {}", file.isHdf5() ? "7.3" : "5", typeOf(*variable));
    facts.samples = isRow ? columns : rows;
    facts.channels = isRow ? 1 : columns;
    if (facts.channels > facts.samples) {
        facts.remarks.push_back(fmt::format(
            "{} has more columns than rows, {}: a row is taken as a sample, a column as a channel",
            facts.source.shown, shapeOf(*variable)));
    }
    const double rate = file.number("fs").value_or(0.0);
    facts.rate = std::isfinite(rate) && rate > 0.0 ? rate : 0.0;
    if (options.axis != "none") {
        setAxis();
    }
    std::vector<std::string> names = file.texts("names");
    if (std::ssize(names) == facts.channels) {
        std::transform(names.begin(), names.end(), names.begin(),
                       [](const std::string& name) { return printable(name, 200); });
        facts.names = names;
    }
}

// Where there is a rate, it is that of a time axis with the same step; another axis is not the
// signal's.
void MatReader::setAxis() {
    const double start = file.number("axis_start").value_or(std::nan(""));
    const double step = file.number("axis_step").value_or(0.0);
    const bool isTime = facts.rate > 0.0;
    const bool fits = !isTime || std::abs(std::abs(step) * facts.rate - 1.0) < 1e-6;
    if (!std::isfinite(start) || !std::isfinite(step) || step == 0.0 || !fits) {
        return;
    }
    const std::vector<std::string> name = file.texts("axis_name");
    facts.axis = SignalAxis{name.empty() ? "axis" : printable(name.front(), 200),
                            start,
                            step,
                            isTime,
                            std::abs(step),
                            std::abs(step)};
}

// Samples from the first on, of all channels. A single row is read as the file has it, not a column
// of one sample at a time.
void MatReader::readValues(std::int64_t first, std::int64_t count) {
    const auto begin = static_cast<int>(first), length = static_cast<int>(count);
    std::array<int, 2> start = {begin, 0}, stride = {1, 1}, edge = {length, facts.channels};
    if (isRow) {
        start = {0, begin};
        edge = {1, length};
    }
    values.resize(static_cast<std::size_t>(count * facts.channels) * numbers->bytes);
    const int error =
        isRow && !file.isHdf5()
            ? Mat_VarReadDataLinear(file.handle(), variable.get(), values.data(), begin, 1, length)
            : Mat_VarReadData(file.handle(), variable.get(), values.data(), start.data(),
                              stride.data(), edge.data());
    if (error != 0) {
        throw Failure(fmt::format(
            "{} is damaged: its samples cannot be read from sample {} on; copy it again",
            facts.source.shown, first + 1));
    }
}

void MatReader::requireExact(std::int64_t first, std::int64_t count) const {
    const auto all = static_cast<std::size_t>(count * facts.channels);
    const std::size_t wide = lossy ? all : numbers->firstWide(values.data(), all);
    if (wide < all) {
        const auto index = static_cast<std::int64_t>(wide);
        throw Failure(
            fmt::format("{}, sample {}, channel {}: an integer beyond 2^53, which a 64-bit "
                        "float may not hold; use --lossy to let it be rounded",
                        facts.source.shown, first + index % count + 1, index / count + 1));
    }
}

void MatReader::fill() {
    const std::int64_t count = std::min(blockLength, facts.samples - position);
    readValues(position, count);
    requireExact(position, count);
    blockBegin = position;
    blockEnd = position + count;
}

// Samples of the block, up to that many.
std::int64_t MatReader::take(double* interleaved, std::int64_t most) {
    const std::int64_t taken = std::min(most, blockEnd - position);
    const std::int64_t channels = facts.channels, width = blockEnd - blockBegin;
    column.resize(static_cast<std::size_t>(taken));
    for (std::int64_t c = 0; c < channels; ++c) {
        const std::int64_t first = c * width + position - blockBegin;
        numbers->decode(values.data() + first * static_cast<std::int64_t>(numbers->bytes),
                        column.size(), column.data());
        for (std::int64_t i = 0; i < taken; ++i) {
            interleaved[i * channels + c] = column[static_cast<std::size_t>(i)];
        }
    }
    position += taken;
    return taken;
}

std::int64_t MatReader::read(double* interleaved, std::int64_t count) {
    std::int64_t got = 0;
    while (got < count && position < facts.samples) {
        if (position == blockEnd) {
            fill();
        }
        got += take(interleaved + got * facts.channels, count - got);
    }
    return got;
}
