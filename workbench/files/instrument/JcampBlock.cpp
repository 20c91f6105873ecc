#include "workbench/files/instrument/JcampBlock.h"

#include "workbench/files/instrument/fields.h"
#include "workbench/files/text/CellCutter.h"
#include "workbench/files/text/ColumnDigits.h"
#include "workbench/files/text/ColumnName.h"
#include "workbench/files/text/UnitText.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"
#include "workbench/system/FileHandle.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <set>

// Of points for each byte of a file: what a count of repetitions can stand for, and no more.
static constexpr std::int64_t mostPerByte = 4096;

namespace {

using Labels = std::map<std::string, std::string, std::less<>>;

// A line ##LABEL= value, the label in capitals and without the letters that do not count.
struct Label {
    std::string name;
    std::string_view value;
};

// A block as it stands in the file.
struct Raw {
    Labels labels;
    LineCursor::Place table;
};

// What a table other than of the points of a signal is.
struct OtherTable {
    const char* label;
    const char* refusal;
};

// Units of x as words: what is measured, and the sign of the unit.
struct Unit {
    std::string_view words, quantity, sign;
};

}  // namespace

static constexpr auto tables = std::to_array<const char*>({"XYDATA", "XYPOINTS"});
static constexpr std::array otherTables = {
    OtherTable{"NTUPLES",
               "holds several variables, as NTUPLES, of which none is taken for the "
               "signal; save one of them as XYDATA"},
    OtherTable{"PEAKTABLE",
               "holds a table of peaks, which is not evenly spaced; save the spectrum "
               "as XYDATA"},
    OtherTable{"PEAKASSIGNMENTS",
               "holds a table of peaks, which is not evenly spaced; save the "
               "spectrum as XYDATA"},
    OtherTable{"RADATA",
               "holds an interferogram, as RADATA, which is not read; save the spectrum "
               "as XYDATA"}};
static constexpr std::array units = {Unit{"1/CM", "Wavenumber", "1/cm"},
                                     Unit{"NANOMETERS", "Wavelength", "nm"},
                                     Unit{"MICROMETERS", "Wavelength", "um"},
                                     Unit{"SECONDS", "Time", "s"},
                                     Unit{"MILLISECONDS", "Time", "ms"},
                                     Unit{"MICROSECONDS", "Time", "us"},
                                     Unit{"NANOSECONDS", "Time", "ns"},
                                     Unit{"MINUTES", "Time", "min"},
                                     Unit{"HZ", "Frequency", "Hz"},
                                     Unit{"PPM", "Chemical shift", "ppm"},
                                     Unit{"M/Z", "m/z", ""}};

static std::string capitals(std::string_view text, std::string_view without) {
    std::string all;
    for (const char letter : text) {
        if (without.find(letter) == std::string_view::npos) {
            all += letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        }
    }
    return all;
}

// Comment goes from $$ to the end of a line.
static std::optional<Label> labelOf(std::string_view line) {
    line = trimmed(line.substr(0, line.find("$$")));
    const std::size_t end = line.find('=');
    if (!line.starts_with("##") || end == std::string_view::npos) {
        return std::nullopt;
    }
    return Label{capitals(line.substr(2, end - 2), " -/_\t"), trimmed(line.substr(end + 1))};
}

bool JcampBlock::recognises(std::string_view head) {
    head.remove_prefix(head.starts_with("\xef\xbb\xbf") ? 3 : 0);
    head.remove_prefix(std::min(head.find_first_not_of(" \t\r\n"), head.size()));
    const std::optional<Label> label = labelOf(head.substr(0, head.find_first_of("\r\n")));
    return label && label->name == "TITLE";
}

// Blocks within each other are open at a time; a label belongs to the innermost.
static std::vector<Raw> rawBlocks(std::FILE* file, const std::string& name) {
    std::vector<Raw> blocks;
    std::vector<std::size_t> open;
    LineCursor cursor(file, name, {});
    for (std::string_view line; cursor.next(line);) {
        const std::optional<Label> label =
            labelOf(line.substr(line.starts_with("\xef\xbb\xbf") ? 3 : 0));
        if (!label) {
            continue;
        }
        if (label->name == "TITLE") {
            open.push_back(blocks.size());
            blocks.emplace_back();
        }
        if (open.empty()) {
            cursor.refuse(
                "a label outside of a block, which is from ##TITLE= to ##END=; correct it");
        }
        Raw& block = blocks[open.back()];
        if (label->name == "END") {
            open.pop_back();
        } else if (block.labels.emplace(label->name, label->value).second &&
                   std::find(tables.begin(), tables.end(), label->name) != tables.end()) {
            block.table = cursor.place();
        }
    }
    if (!open.empty()) {
        throw Failure(
            fmt::format("{} is truncated: a block does not end with ##END=; copy it again", name));
    }
    return blocks;
}

static std::string valueOf(const Labels& labels, std::string_view name) {
    const auto found = labels.find(name);
    return found == labels.end() ? "" : found->second;
}

static std::string refusalOfTable(const Labels& labels) {
    for (const OtherTable& other : otherTables) {
        if (labels.contains(std::string_view(other.label))) {
            return other.refusal;
        }
    }
    return "holds no table of points, XYDATA or XYPOINTS; choose another";
}

// A label that has to be a number, if it is there at all.
static void setNumber(JcampBlock& block, const Labels& labels, const char* label, double& number) {
    const std::string text = valueOf(labels, label);
    const std::optional<double> value = text.empty() ? number : realNumber(text);
    if (!value || !std::isfinite(*value)) {
        block.refusal = fmt::format("has a {} that is not a number, \"{}\"; correct it", label,
                                    printable(text, 24));
        return;
    }
    number = *value;
}

// 1801, or 1801.0; 0 if it is not a number of points.
static std::int64_t countOf(std::string_view text) {
    const double number = realNumber(text).value_or(0.0);
    return number >= 1.0 && number < 0x1p53 && number == std::floor(number)
               ? static_cast<std::int64_t>(number)
               : 0;
}

static void setTable(JcampBlock& block, const Labels& labels, std::int64_t most) {
    const auto* const label = std::find_if(
        tables.begin(), tables.end(),
        [&labels](const char* name) { return labels.contains(std::string_view(name)); });
    if (label == tables.end()) {
        block.refusal = refusalOfTable(labels);
        return;
    }
    const std::string form = capitals(valueOf(labels, *label), " \t");
    block.isPairs = form == "(XY..XY)";
    block.points = countOf(valueOf(labels, "NPOINTS"));
    if (!block.isPairs && form != "(X++(Y..Y))") {
        block.refusal = fmt::format(
            "holds a table of the form {}, which is not that of a signal; "
            "save it as XYDATA=(X++(Y..Y))",
            printable(form, 24));
    } else if (block.points < 1) {
        block.refusal = "does not say how many points it has; put the number at NPOINTS";
    } else if (block.points > most) {
        block.refusal = fmt::format(
            "declares {} points, more than a file of its length can hold; "
            "copy it again",
            block.points);
    }
    for (const std::string* const end : {&block.firstX, &block.lastX}) {
        if (block.refusal.empty() && !block.isPairs &&
            !std::isfinite(realNumber(*end).value_or(NAN))) {
            block.refusal =
                "does not say where it begins and ends; put the numbers at FIRSTX and "
                "LASTX";
        }
    }
}

static JcampBlock blockOf(const Raw& raw, std::int64_t fileLength) {
    const Labels& labels = raw.labels;
    JcampBlock block;
    block.title = printable(valueOf(labels, "TITLE"));
    block.version = printable(valueOf(labels, "JCAMPDX"), 8);
    block.xUnits = printable(valueOf(labels, "XUNITS"));
    block.xLabel = printable(valueOf(labels, "XLABEL"));
    block.yUnits = printable(valueOf(labels, "YUNITS"));
    block.yLabel = printable(valueOf(labels, "YLABEL"));
    block.firstX = valueOf(labels, "FIRSTX");
    block.lastX = valueOf(labels, "LASTX");
    block.table = raw.table;
    setNumber(block, labels, "XFACTOR", block.xFactor);
    setNumber(block, labels, "YFACTOR", block.yFactor);
    if (block.refusal.empty()) {
        setTable(block, labels, fileLength * mostPerByte);
    }
    return block;
}

std::vector<JcampBlock> JcampBlock::allOf(std::FILE* file, const std::string& name) {
    seekFile(file, 0, SEEK_END);
    const std::int64_t length = filePosition(file);
    std::vector<JcampBlock> blocks;
    std::set<std::string> titles;
    for (const Raw& raw : rawBlocks(file, name)) {
        if (capitals(valueOf(raw.labels, "DATATYPE"), "") == "LINK") {
            continue;
        }
        JcampBlock block = blockOf(raw, length);
        const std::string title = block.title.empty() ? "untitled" : block.title;
        block.title = title;
        for (int i = 2; !titles.insert(block.title).second; ++i) {
            block.title = fmt::format("{} ({})", title, i);
        }
        blocks.push_back(block);
    }
    return blocks;
}

double JcampBlock::first() const {
    return realNumber(firstX).value_or(0.0);
}

double JcampBlock::step() const {
    const double last = realNumber(lastX).value_or(0.0);
    return points > 1 ? (last - first()) / static_cast<double>(points - 1) : 0.0;
}

std::string JcampBlock::xName() const {
    const std::string words = capitals(xUnits, "");
    const auto* const unit = std::find_if(
        units.begin(), units.end(), [&words](const Unit& each) { return each.words == words; });
    if (unit != units.end()) {
        return withUnit(xLabel.empty() ? std::string(unit->quantity) : xLabel, unit->sign);
    }
    return xLabel.empty() ? (xUnits.empty() ? "x" : xUnits) : withUnit(xLabel, xUnits);
}

std::string JcampBlock::yName() const {
    return yLabel.empty() ? yUnits : withUnit(yLabel, yUnits);
}

static std::optional<TimeUnit> unitOf(const std::string& name) {
    const ColumnName words(name);
    return words.kind == ColumnName::Kind::time ? words.unit : std::nullopt;
}

std::optional<EvenAxis> JcampBlock::axis() const {
    SignalAxis axis{xName(), first(), step()};
    if (!(std::abs(axis.step) > 0.0) || !std::isfinite(axis.step)) {
        return std::nullopt;
    }
    ColumnDigits digits;
    digits.add(firstX);
    digits.add(lastX);
    const double size = std::abs(axis.step), last = realNumber(lastX).value_or(0.0);
    const double slack =
        0.5 * (digits.unit(axis.start) + digits.unit(last)) / static_cast<double>(points - 1);
    axis.lowestStep = size > slack ? size - slack : size;
    axis.highestStep = size + slack;
    return evenAxis(axis, unitOf(axis.name), false);
}

EvenAxis JcampBlock::axis(const EvenSteps& steps) const {
    SignalAxis axis = evenAxis(xName(), ColumnName(), steps).axis;
    axis.start *= xFactor;
    axis.step *= xFactor;
    axis.lowestStep *= std::abs(xFactor);
    axis.highestStep *= std::abs(xFactor);
    return evenAxis(axis, unitOf(axis.name), steps.exact());
}
