#pragma once

#include "workbench/files/text/NumberText.h"
#include "workbench/signals/TextOptions.h"

#include <string>
#include <string_view>
#include <utility>

constexpr bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

// Reads the cells of a file as numbers that people and instruments write: besides what readNumber
// takes, in quotes, with an exponent after D, with U+2212 as the minus, with a decimal comma. One
// decimal sign goes for the whole file, the first that comes or the one that is told: where 400,5
// is a number, 1.234 may be a thousand.
class CellReader {
public:
    explicit CellReader(TextOptions textOptions)
        : options(std::move(textOptions)), sign(options.decimal.value_or('\0')) {}

    enum class Kind { finite, nonfinite, tooLarge, missing, otherSign, thousands, notANumber };

    // cell becomes the plain text of the number, valid until the next call; the value is set if the
    // result is finite or nonfinite.
    Kind read(std::string_view& cell, double& value) {
        // The word for a missing number may be one: -9999.
        if (sign != ',' && (options.missing.empty() || cell != options.missing) &&
            readNumber(cell, false, value) == NumberKind::finite) {
            if (sign == '\0' && cell.find('.') != std::string_view::npos) {
                sign = '.';
            }
            return Kind::finite;
        }
        return readOdd(cell, value);
    }

    // '\0': none was met.
    [[nodiscard]] char decimal() const { return sign; }

private:
    Kind readOdd(std::string_view& cell, double& value);
    Kind readWithComma(std::string_view& cell, double& value);

    TextOptions options;
    char sign;
    std::string plain;
};

// Whether a cell says that there is no number: empty, NA, N/A, null, or what the options name.
bool isMissing(std::string_view cell, const TextOptions& options);

// Whether a cell stands for data, be they wrong: a number, a moment, a word for a missing number,
// or digits with signs alone (1.2.3). All else is a word that can be a name.
bool isDatum(std::string_view cell, const TextOptions& options);
