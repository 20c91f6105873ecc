#include "workbench/files/instrument/JcampReader.h"

#include "workbench/files/text/ColumnDigits.h"
#include "workbench/messages/Failure.h"
#include "workbench/messages/Printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

std::vector<FilePart> JcampReader::parts(std::FILE* file, const SourceName& source) {
    std::vector<FilePart> parts;
    for (const JcampBlock& block : JcampBlock::allOf(file, source.shown)) {
        FilePart& part = parts.emplace_back();
        part.name = block.title;
        part.what = fmt::format("{}{}{}", printable(block.yName(), 60),
                                block.yName().empty() ? "" : ", ", block.points);
        if (!block.refusal.empty()) {
            part.refusal =
                fmt::format("{}:{} {}", source.shown, printable(part.name, 100), block.refusal);
        }
    }
    return parts;
}

// The file may have changed since its parts were listed.
static JcampBlock chosenBlock(std::FILE* file, const SourceName& source, const std::string& part) {
    const std::vector<JcampBlock> blocks = JcampBlock::allOf(file, source.shown);
    const auto block = std::find_if(blocks.begin(), blocks.end(), [&part](const JcampBlock& each) {
        return each.title == part && each.refusal.empty();
    });
    if (block == blocks.end()) {
        throw Failure(fmt::format("{} has changed meanwhile; try again", source.shown));
    }
    return *block;
}

JcampReader::JcampReader(FileHandle opened, const SourceName& source, const ReadOptions& options)
    : file(std::move(opened)), block(chosenBlock(file.get(), source, options.part)) {
    facts.source = source;
    facts.format = block.version.empty() ? "JCAMP-DX" : "JCAMP-DX " + block.version;
    facts.channels = 1;
    facts.samples = block.points;
    if (!block.yName().empty()) {
        facts.names = {block.yName()};
    }
    if (block.isPairs) {
        fitPairs();
    } else {
        if (const std::optional<EvenAxis> even = block.axis()) {
            setAxis(*even);
        }
        readThrough();
    }
    table.emplace(file.get(), block, source.shown);
}

void JcampReader::setAxis(const EvenAxis& even) {
    facts.axis = even.axis;
    facts.rate = even.rate;
}

void JcampReader::readThrough() {
    table.emplace(file.get(), block, facts.source.shown);
    JcampTable::Point point;
    while (table->next(point)) {
    }
}

// Twice: how many digits the x of all points have decides whether they are even.
void JcampReader::fitPairs() {
    JcampTable::Point point;
    ColumnDigits digits;
    for (JcampTable all(file.get(), block, facts.source.shown); all.next(point);) {
        digits.add(point.xText);
    }
    EvenSteps steps(digits);
    JcampTable all(file.get(), block, facts.source.shown);
    for (std::int64_t i = 0; all.next(point); ++i) {
        if (!steps.accept(point.x)) {
            throw Failure(
                fmt::format("{}: the points are not evenly spaced at number {}, x = {}; "
                            "resample them",
                            facts.source.shown, i + 1, point.x));
        }
    }
    if (block.points > 1 && !steps.even()) {
        throw Failure(
            fmt::format("{}: the points are not evenly spaced; resample them", facts.source.shown));
    }
    if (block.points > 1) {
        setAxis(block.axis(steps));
    }
}

std::int64_t JcampReader::read(double* interleaved, std::int64_t count) {
    JcampTable::Point point;
    std::int64_t got = 0;
    while (got < count && position < facts.samples && table->next(point)) {
        interleaved[got++] = point.y;
        ++position;
    }
    return got;
}
