#include "workbench/files/instrument/JcampTable.h"

#include "workbench/files/text/ColumnDigits.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

using ItemKind = AsdfLine::Item::Kind;

JcampTable::JcampTable(std::FILE* file, const JcampBlock& of, const std::string& name)
    : block(of), cursor(file, name, of.table) {}

void JcampTable::refuse(const AsdfLine::Item& item) const {
    const std::string text = printable(item.text, 24);
    if (item.kind == ItemKind::end) {
        cursor.refuse("a number is expected after the x; correct it");
    }
    if (item.kind == ItemKind::missing) {
        cursor.refuse("? stands for a point that was not measured; put a number there");
    }
    cursor.refuse(item.kind == ItemKind::wrong
                      ? fmt::format("\"{}\" is not a number; correct it", text)
                      : fmt::format("\"{}\" has no number before it; correct it", text));
}

// To the next line of the table that holds more than comment; false where the next label ends it.
bool JcampTable::nextLine() {
    std::string_view text;
    while (cursor.next(text)) {
        text = text.substr(0, text.find("$$"));
        const std::size_t begin = text.find_first_not_of(" \t");
        if (begin != std::string_view::npos) {
            line = AsdfLine(text);
            return !text.substr(begin).starts_with("##");
        }
    }
    return false;
}

AsdfLine::Item JcampTable::number() {
    const AsdfLine::Item item = line.next();
    if (item.kind != ItemKind::number) {
        refuse(item);
    }
    return item;
}

// Within half a step, or what its digits leave.
void JcampTable::checkX(const AsdfLine::Item& item) {
    ColumnDigits digits;
    digits.add(item.text);
    const double step = block.step(), x = item.value * block.xFactor;
    const auto index = static_cast<double>(byDifference ? position - 1 : position);
    const double expected = block.first() + index * step;
    const double unit = digits.unit(item.value) * block.xFactor;
    const double slack = 0.5 * std::max(std::abs(step), std::abs(unit)) + 1e-9 * std::abs(expected);
    if (!(std::abs(x - expected) <= slack)) {
        cursor.refuse(
            fmt::format("x is {:.10g}, but {:.10g} by the {} points before it, so that some are "
                        "missing or too many; copy the file again",
                        x, expected, position));
    }
}

void JcampTable::beginLine() {
    checkX(number());
    if (!byDifference) {
        return;
    }
    const double check = number().value;
    if (check != value) {
        cursor.refuse(
            fmt::format("y is {}, but {} by the differences of the line before it; copy the file "
                        "again",
                        check, value));
    }
    byDifference = false;
    difference = 0.0;
}

// The next y of lines X++(Y..Y), without its factor.
bool JcampTable::nextY() {
    while (repeats == 0) {
        const AsdfLine::Item item = line.next();
        switch (item.kind) {
            case ItemKind::end:
                if (!nextLine()) {
                    return false;
                }
                beginLine();
                break;
            case ItemKind::number:
                value = item.value;
                difference = 0.0;
                byDifference = false;
                return true;
            case ItemKind::difference:
                if (position == 0) {
                    refuse(item);
                }
                value += difference = item.value;
                byDifference = true;
                return true;
            case ItemKind::repeat:
                if (position == 0 || item.value != std::floor(item.value)) {
                    refuse(item);
                }
                // One more than there may be is enough to say so.
                repeats = static_cast<std::int64_t>(
                              std::min(item.value, static_cast<double>(block.points) + 1.0)) -
                          1;
                break;
            default:
                refuse(item);
        }
    }
    --repeats;
    value += difference;
    return true;
}

bool JcampTable::nextPair(Point& point) {
    AsdfLine::Item item = line.next();
    while (item.kind == ItemKind::end) {
        if (!nextLine()) {
            return false;
        }
        item = line.next();
    }
    if (item.kind != ItemKind::number) {
        refuse(item);
    }
    point.x = item.value;
    point.xText = item.text;
    value = number().value;
    return true;
}

bool JcampTable::next(Point& point) {
    const bool more = block.isPairs ? nextPair(point) : nextY();
    if (more != (position < block.points)) {
        cursor.refuse(more
                          ? fmt::format("more than the {} points that NPOINTS declares; correct it",
                                        block.points)
                          : fmt::format("the table ends after {} points, but NPOINTS declares {}; "
                                        "copy the file again",
                                        position, block.points));
    }
    point.y = value * block.yFactor;
    if (!std::isfinite(point.y)) {
        cursor.refuse("y is too large for a double; correct YFACTOR");
    }
    position += more ? 1 : 0;
    return more;
}
