#pragma once

#include "workbench/parts/variables/Attributes.h"
#include "workbench/parts/variables/SampleRows.h"
#include "workbench/parts/variables/VariableShape.h"
#include "workbench/signals/SourceName.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A NetCDF file of the classic formats that is read.
class NetcdfFile {
public:
    // Failure if it cannot be opened or is truncated.
    NetcdfFile(const std::string& path, const SourceName& source);
    NetcdfFile(const NetcdfFile&) = delete;
    NetcdfFile& operator=(const NetcdfFile&) = delete;
    ~NetcdfFile();

    [[nodiscard]] int id() const { return file; }

    struct Variable {
        int id = 0;
        std::string name;
        int type = 0;  // as the library numbers them
        std::vector<std::uint64_t> lengths;
        std::vector<std::string> dimensions;  // their names

        // Whether it gives the points of a dimension of its own name.
        [[nodiscard]] bool isCoordinate() const {
            return dimensions.size() == 1 && dimensions[0] == name;
        }
        // "32-bit float"; empty if it is text.
        [[nodiscard]] std::string typeName() const;
        [[nodiscard]] bool isNarrow() const;  // floating point of 32 bits
    };
    [[nodiscard]] const std::vector<Variable>& variables() const { return all; }
    // Null if there is none of that name.
    [[nodiscard]] const Variable* named(const std::string& variable) const;

private:
    [[nodiscard]] Variable variableOf(int number) const;

    std::string name;  // for messages
    int file = -1;
    std::vector<Variable> all;
};

// The attributes of a variable, or of the file. The file outlives it.
class NetcdfAttributes final : public Attributes {
public:
    explicit NetcdfAttributes(const NetcdfFile& ofFile);
    NetcdfAttributes(const NetcdfFile& ofFile, const NetcdfFile::Variable& variable)
        : file(ofFile), owner(variable.id) {}

    [[nodiscard]] std::vector<std::string> names() const override;
    [[nodiscard]] std::vector<double> numbers(const std::string& name) const override;
    [[nodiscard]] std::vector<std::string> texts(const std::string& name) const override;

private:
    const NetcdfFile& file;
    int owner;
};

// A variable by rows.
class NetcdfRows final : public SampleRows {
public:
    NetcdfRows(std::shared_ptr<const NetcdfFile> ofFile, NetcdfFile::Variable itsVariable,
               VariableShape itsShape, std::string displayName);

    std::size_t read(std::int64_t first, std::int64_t count, double* to) override;

private:
    std::shared_ptr<const NetcdfFile> file;
    NetcdfFile::Variable variable;
    VariableShape shape;
    std::string name;
};
