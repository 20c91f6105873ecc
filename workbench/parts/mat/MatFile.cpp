#include "workbench/parts/mat/MatFile.h"

#include "workbench/messages/Failure.h"
#include "workbench/parts/mat/MatNumbers.h"
#include "workbench/parts/mat/MatText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>
#include <span>

MatFile::MatFile(const std::string& path, const SourceName& file)
    : mat(Mat_Open(path.c_str(), MAT_ACC_RDONLY)) {
    if (mat == nullptr || (!isHdf5() && Mat_GetVersion(mat.get()) != MAT_FT_MAT5)) {
        throw Failure(fmt::format("{} is damaged; copy it again", file.shown));
    }
}

VariableHandle MatFile::named(const char* variable) const {
    return VariableHandle(Mat_VarReadInfo(handle(), variable));
}

std::string shapeOf(const matvar_t& variable) {
    return fmt::format("{}", fmt::join(variable.dims, variable.dims + variable.rank, " x "));
}

std::int64_t elementsOf(const matvar_t& variable) {
    std::int64_t product = 1;
    for (const std::size_t length :
         std::span(variable.dims, static_cast<std::size_t>(variable.rank))) {
        const std::int64_t most =
            std::numeric_limits<std::int64_t>::max() / std::max<std::int64_t>(1, product);
        if (length > static_cast<std::uint64_t>(most)) {
            return -1;
        }
        product *= static_cast<std::int64_t>(length);
    }
    return product;
}

std::optional<double> MatFile::number(const char* variable) const {
    const VariableHandle info = named(variable);
    const MatNumbers* const numbers = info == nullptr ? nullptr : MatNumbers::of(info->class_type);
    if (numbers == nullptr || info->isComplex != 0 || elementsOf(*info) != 1 ||
        Mat_VarReadDataAll(handle(), info.get()) != 0 || info->data == nullptr) {
        return std::nullopt;
    }
    double value = 0.0;
    numbers->decode(info->data, 1, &value);
    return value;
}

std::vector<std::string> MatFile::texts(const char* variable) const {
    constexpr std::int64_t most = 1 << 20;  // letters, or cells
    const VariableHandle info = named(variable);
    if (info == nullptr || elementsOf(*info) < 0 || elementsOf(*info) > most) {
        return {};
    }
    if (info->class_type == MAT_C_CHAR && Mat_VarReadDataAll(handle(), info.get()) == 0) {
        return rowsOf(*info);
    }
    std::vector<std::string> texts;
    if (info->class_type == MAT_C_CELL && Mat_VarReadDataAll(handle(), info.get()) == 0) {
        for (std::int64_t i = 0; i < elementsOf(*info); ++i) {
            const matvar_t* const cell = Mat_VarGetCell(info.get(), static_cast<int>(i));
            const std::vector<std::string> rows =
                cell == nullptr ? std::vector<std::string>() : rowsOf(*cell);
            texts.push_back(rows.empty() ? "" : rows.front());
        }
    }
    return texts;
}
