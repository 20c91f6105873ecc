#include "workbench/files/instrument/UffWriter.h"

#include "workbench/files/instrument/UffAbscissa.h"
#include "workbench/files/instrument/fields.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <bit>
#include <cmath>
#include <optional>
#include <string_view>

static_assert(std::endian::native == std::endian::little,
              "values are written as they are in memory");

static constexpr std::size_t lineWidth = 80, labelWidth = 20;

// As many digits as fit, and always a point: without one, Fortran takes the last five digits as
// those after it.
static std::string numberOf(double value, std::size_t width) {
    std::string text;
    for (int digits = 9; digits > 0 && (text.empty() || text.size() > width); --digits) {
        text = fmt::format("{:.{}e}", value, digits);
    }
    return text;
}

// The axis that a rate alone stands for, or the index, has its place too.
static SignalAxis axisOf(const ResultInfo& info) {
    SignalAxis axis =
        info.axis && (info.axis->time || !(info.rate > 0.0)) ? *info.axis : SignalAxis{};
    if (info.rate > 0.0) {
        axis.step = axis.step < 0.0 ? -1.0 / info.rate : 1.0 / info.rate;
    } else if (axis.step == 0.0) {
        axis.step = 1.0;
    }
    return axis;
}

static const SourceName& checkedName(const SignalTarget& target) {
    if (target.dither ||
        (target.encoding != Encoding::automatic && target.encoding != Encoding::float64)) {
        throw Failure(fmt::format("{} is written as 64-bit floats; leave out {}", target.name.shown,
                                  target.dither ? "--dither" : "--encoding"));
    }
    return target.name;
}

UffWriter::UffWriter(const SignalTarget& target, const ResultInfo& result)
    : name(target.name.shown),
      info(result),
      output(checkedName(target), target.replace),
      channels(static_cast<std::size_t>(result.channels)) {
    const SignalAxis axis = axisOf(info);
    if (info.rate > 0.0) {
        abscissaType = 17;
        abscissaName = "Time (s)";
    } else if (info.axis) {
        abscissaName = printable(info.axis->name);
    }
    // Without a blank between them, other readers may take two numbers as one.
    for (const std::size_t width : {UffAbscissa::width - 1, UffAbscissa::width}) {
        start = numberOf(axis.start, width);
        step = numberOf(axis.step, width);
        if (holds(axis)) {
            return;
        }
    }
    if (!target.lossy) {
        throw Failure(
            fmt::format("{} has room for {} letters of a number, too few for steps of {} from {}; "
                        "use --lossy to let them be rounded, or write text, as with -o FILE.csv",
                        name, UffAbscissa::width, axis.step, axis.start));
    }
}

// Whether the abscissa, as it is read again, is the axis: any step will do that its own digits
// leave.
bool UffWriter::holds(const SignalAxis& axis) const {
    const NameAndUnit words = splitUnit(abscissaName);
    const std::optional<EvenAxis> even =
        UffAbscissa{start, step, abscissaType, words.name, words.unit}.axis();
    if (!even) {
        return axis.start == 0.0 && axis.step == 1.0;
    }
    const double size = std::abs(even->axis.step);
    const bool fits = size >= axis.lowestStep && size <= axis.highestStep;
    const bool same = info.rate > 0.0 ? even->rate == info.rate : even->axis.step == axis.step;
    return even->axis.start == axis.start && (even->rate > 0.0) == (info.rate > 0.0) &&
           (same || fits);
}

bool UffWriter::holdsName(const std::string& name) {
    return printable(name).size() <= lineWidth;
}

void UffWriter::write(const double* interleaved, std::int64_t count) {
    column.resize(static_cast<std::size_t>(count));
    for (std::size_t c = 0; c < channels.size(); ++c) {
        for (std::size_t i = 0; i < column.size(); ++i) {
            column[i] = interleaved[i * channels.size() + c];
        }
        channels[c].add(column.data(), column.size());
    }
    samples += count;
}

static std::string identification(std::string_view text) {
    const std::string shown = printable(text);
    return text.empty() ? "NONE" : std::string(cutTo(shown, lineWidth));
}

// Type, label and unit. What has no unit, or does not fit, is all in the label.
static std::string described(std::int64_t type, const std::string& name) {
    NameAndUnit words = splitUnit(name);
    if (words.name.size() > labelWidth || words.unit.size() > labelWidth) {
        words = {name, ""};
    }
    const auto word = [](const std::string& text) {
        return text.empty() ? std::string("NONE") : std::string(cutTo(text, labelWidth));
    };
    // Widths are bytes here, not letters.
    std::string label = word(words.name);
    label.resize(labelWidth, ' ');
    return fmt::format("{:>10}    0    0    0 {} {}\n", type, label, word(words.unit));
}

// Lines 1 to 11. The third line of identification is for a date.
std::string UffWriter::head(std::size_t channel, const std::vector<std::string>& notes) const {
    const bool named = info.columnNames.size() == channels.size();
    const std::string own = named ? printable(info.columnNames[channel]) : "";
    const auto note = [&](std::size_t i) {
        return identification(i < notes.size() ? notes[i] : "");
    };
    return fmt::format("{}\n{}\nNONE\n{}\n{}\n", identification(holdsName(own) ? own : ""), note(0),
                       note(1), note(2)) +
           fmt::format("{:>5}{:>10}{:>5}{:>10} NONE      {:>10}{:>4} NONE      {:>10}{:>4}\n",
                       info.rate > 0.0 ? 1 : 0, channel + 1, 0, 0, channel + 1, 0, 0, 0) +
           fmt::format("{:>10}{:>10}{:>10}{:>13}{:>13}{:>13}\n", 4, samples, 1, start, step,
                       "0.00000e+00") +
           described(abscissaType, abscissaName) + described(0, holdsName(own) ? own : "") +
           described(0, "") + described(0, "");
}

void UffWriter::finish(const std::vector<std::string>& closingNotes) {
    constexpr std::int64_t most = 9999999999;
    if (samples > most) {
        throw Failure(fmt::format(
            "{}: at most {} samples have a place in the format; write another", name, most));
    }
    std::vector<std::string> notes = info.notes;
    notes.insert(notes.end(), closingNotes.begin(), closingNotes.end());
    for (std::size_t c = 0; c < channels.size(); ++c) {
        output.write(fmt::format("    -1\n    58b{:>6}{:>6}{:>12}{:>12}{:>6}{:>6}{:>12}{:>12}\n", 1,
                                 2, 11, samples * 8, 0, 0, 0, 0));
        output.write(head(c, notes));
        for (std::vector<double> block;
             !(block = channels[c].take(std::size_t{1} << 16)).empty();) {
            output.write({reinterpret_cast<const char*>(block.data()), 8 * block.size()});
        }
        output.write("\n    -1\n");
    }
    output.commit();
}
