#pragma once

#include "workbench/files/disk/FileStream.h"
#include "workbench/files/text/AxisColumn.h"
#include "workbench/files/text/LineReader.h"
#include "workbench/files/text/TextLayout.h"
#include "workbench/signals/SignalReader.h"

// Text columns. The file is parsed once on opening, to check every line, and again as it is read.
class TextReader final : public SignalReader {
public:
    TextReader(FileHandle text, const SourceName& source, const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    void readLayout();
    void scan();
    void useAxis(const EvenSteps& steps);
    void rewind();
    bool nextRow();
    void parseCell(std::string_view cell, std::size_t column);
    [[noreturn]] void refuse(const std::string& what) const;
    [[noreturn]] void refuseCell(std::size_t column, const std::string& what) const;

    FileHandle file;
    LineReader lines;
    ReadOptions allowed;
    TextLayout layout;
    std::optional<AxisColumn> axisColumn;
    std::vector<double> row;  // the columns of the line that was read last
    std::int64_t position = 0;
};
