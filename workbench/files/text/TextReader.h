#pragma once

#include "workbench/files/disk/FileStream.h"
#include "workbench/files/text/AxisSearch.h"
#include "workbench/files/text/LineReader.h"
#include "workbench/files/text/TextLayout.h"
#include "workbench/signals/SignalReader.h"

// Text columns. The file is parsed on opening, to check every line, once more if a column looks
// like an axis, and again as it is read.
class TextReader final : public SignalReader {
public:
    TextReader(FileHandle text, const SourceName& source, const ReadOptions& options);

    // Of a pipe, whose samples are checked as they come. head: what was read from it before, so
    // many lines of data, at least two, and those that are not; canStream has it.
    TextReader(Pipe opened, const std::string& head, int headLines, const SourceName& source,
               const ReadOptions& options);

    // Whether the columns of a text are known by its first lines: none may be an axis, which only
    // the last line shows. Failure as the reader.
    static bool canStream(const std::string& head, int headLines, const SourceName& source,
                          const ReadOptions& options);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    TextReader(std::FILE* rest, const std::string& head, const SourceName& source,
               const ReadOptions& options);
    void readLayout();
    [[nodiscard]] AxisSearch searchHead(const ColumnChoice& choice, int headLines);
    void scan(const ColumnChoice& choice);
    void assign(const ColumnChoice& choice, const AxisSearch& search);
    void remarkOn(const AxisSearch::Finding& found, const AxisSearch& search);
    void rewind();
    std::int64_t endOfPipe(std::int64_t count);
    bool nextRow(AxisSearch* search = nullptr);
    void parseCell(std::string_view cell, std::size_t column);
    [[nodiscard]] std::string columnName(std::size_t column) const;
    [[noreturn]] void refuse(const std::string& what) const;
    [[noreturn]] void refuseCell(std::size_t column, std::int64_t line,
                                 const std::string& what) const;

    FileHandle file;
    std::optional<Pipe> pipe;  // in place of the file
    std::unique_ptr<Sha256> digest;
    LineReader lines;
    bool allowNonfinite;
    TextLayout layout;
    std::vector<std::size_t> channels;  // their columns
    std::vector<double> row;            // the columns of the line that was read last
    std::int64_t position = 0;
};
