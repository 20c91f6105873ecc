#include "workbench/signals/Encoding.h"

#include <algorithm>
#include <cmath>

const std::vector<EncodingRow>& EncodingRow::all() {
    static const std::vector<EncodingRow> rows = {
        {Encoding::automatic, "auto", 0, false},  {Encoding::pcm16, "pcm16", 2, true},
        {Encoding::pcm24, "pcm24", 3, true},      {Encoding::pcm32, "pcm32", 4, true},
        {Encoding::float32, "float32", 4, false}, {Encoding::float64, "float64", 8, false}};
    return rows;
}

const EncodingRow& EncodingRow::of(Encoding encoding) {
    return *std::find_if(all().begin(), all().end(),
                         [encoding](const EncodingRow& row) { return row.encoding == encoding; });
}

const EncodingRow* EncodingRow::named(std::string_view word) {
    const auto row = std::find_if(all().begin(), all().end(),
                                  [word](const EncodingRow& each) { return each.word == word; });
    return row == all().end() ? nullptr : &*row;
}

double EncodingRow::stored(double sample) const {
    if (integer) {
        const double full = std::ldexp(1.0, 8 * bytes - 1);
        return std::clamp(std::nearbyint(sample * full), -full, full - 1.0) / full;
    }
    return bytes == 4 ? static_cast<double>(static_cast<float>(sample)) : sample;
}
