#pragma once

#include "workbench/files/disk/FileStream.h"
#include "workbench/files/text/AxisSearch.h"
#include "workbench/files/text/CellText.h"
#include "workbench/files/text/ClockTime.h"
#include "workbench/files/text/GapFiller.h"
#include "workbench/files/text/LineReader.h"
#include "workbench/files/text/TextLayout.h"
#include "workbench/signals/SignalReader.h"

#include <string_view>

// Text columns. The file is parsed on opening, to check every line, once more if a column looks
// like an axis, and again as it is read.
class TextReader final : public SignalReader {
public:
    TextReader(FileHandle text, const SourceName& source, const ReadOptions& reading);

    // Of a pipe, whose samples are checked as they come. head: what was read from it before, so
    // many lines of data, at least two, and those that are not; canStream has it.
    TextReader(Pipe opened, const std::string& head, int headLines, const SourceName& source,
               const ReadOptions& reading);

    // Whether the columns of a text are known by its first lines: none may be an axis, which only
    // the last line shows. Failure as the reader.
    static bool canStream(const std::string& head, int headLines, const SourceName& source,
                          const ReadOptions& reading);

    std::int64_t read(double* interleaved, std::int64_t count) override;

private:
    TextReader(std::FILE* rest, const std::string& head, const SourceName& source,
               const ReadOptions& reading);
    bool readLayout();
    void requireLayout();
    ColumnChoice chosen(const ReadOptions& reading);
    [[nodiscard]] AxisSearch searchHead(const ColumnChoice& choice, int headLines);
    void scan(const ColumnChoice& choice);
    void assign(const ColumnChoice& choice, const AxisSearch& search);
    void remarkOn(const AxisSearch::Finding& found, const AxisSearch& search);
    void rewind();
    std::int64_t endOfPipe(std::int64_t count);
    bool nextRow(AxisSearch* search = nullptr);
    bool nextWholeRow();
    void fillGaps();
    [[noreturn]] void refuseGap(std::size_t column, const std::string& where) const;
    [[nodiscard]] bool isTaken(CellReader::Kind kind, std::size_t column);
    [[nodiscard]] bool takeCells(std::string_view line);
    CellReader::Kind kindOf(std::string_view& cell, std::size_t column);
    [[noreturn]] void refuseLine(std::string_view line);
    [[nodiscard]] std::string faultOf(CellReader::Kind kind, const std::string& cell,
                                      std::size_t column) const;
    void remark(const std::string& what);
    void remarkOnLayout();
    [[nodiscard]] std::string columnName(std::size_t column) const;
    [[noreturn]] void refuse(const std::string& what) const;
    [[noreturn]] void refuseCell(std::size_t column, std::int64_t line,
                                 const std::string& what) const;

    FileHandle file;
    std::optional<Pipe> pipe;  // in place of the file
    std::unique_ptr<Sha256> digest;
    LineReader lines;
    bool allowNonfinite;
    TextOptions options;
    CellReader cellReader;
    TextLayout layout;
    std::vector<std::size_t> channels;     // their columns
    std::vector<bool> used;                // columns that are read
    std::optional<std::size_t> mayBeAxis;  // before it is known: no gaps of it are filled
    std::optional<GapFiller> filler;       // where gaps are filled
    std::int64_t filled = 0;               // numbers, in the whole file
    std::vector<bool> missing;             // of the line that was read last
    std::vector<MomentColumn> moments;     // a column each, used by those of times
    // The columns of the line that was read last, and their text.
    std::vector<double> row;
    std::vector<std::string_view> cells;
    std::int64_t position = 0;
};
