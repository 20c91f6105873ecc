#include "workbench/parts/mat/MatText.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

// The library of the language converts between the forms of Unicode for names of files alone.
std::u16string lettersOf(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}

static std::string utf8Of(const std::u16string& letters) {
    const std::u8string bytes = std::filesystem::path(letters).u8string();
    return {bytes.begin(), bytes.end()};
}

template <typename Unit>
static std::u16string unitsOf(const matvar_t& text) {
    const std::span units(static_cast<const Unit*>(text.data), text.nbytes / sizeof(Unit));
    return {units.begin(), units.end()};
}

// All letters, column by column.
static std::u16string allLettersOf(const matvar_t& text) {
    switch (text.data_type) {
        case MAT_T_INT8:
        case MAT_T_UINT8:
        case MAT_T_UTF8: {
            const auto bytes = std::span(static_cast<const char*>(text.data), text.nbytes);
            return lettersOf({bytes.begin(), bytes.end()});
        }
        case MAT_T_UINT16:
        case MAT_T_UTF16:
            return unitsOf<std::uint16_t>(text);
        case MAT_T_UINT32:
        case MAT_T_UTF32:
            return unitsOf<std::uint32_t>(text);
        default:
            return {};
    }
}

static std::vector<std::string> rowsOf(const std::u16string& letters, std::size_t rows) {
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < rows; ++row) {
        std::u16string text;
        for (std::size_t at = row; at < letters.size(); at += rows) {
            text += letters[at];
        }
        text.erase(text.find_last_not_of(u' ') + 1);
        texts.push_back(utf8Of(text));
    }
    return texts;
}

std::vector<std::string> rowsOf(const matvar_t& letters) {
    constexpr std::size_t mostBytes = 4;           // of a letter
    constexpr std::size_t mostLetters = 1U << 20;  // a damaged file may declare any number
    if (letters.class_type != MAT_C_CHAR || letters.rank != 2 || letters.data == nullptr) {
        return {};
    }
    // Without letters there may be any number of rows.
    const std::size_t rows = letters.dims[0], count = rows * letters.dims[1];
    if (count == 0 || count > mostLetters || letters.nbytes / mostBytes > count) {
        return {};
    }
    try {
        const std::u16string all = allLettersOf(letters);
        return all.size() == count && rows <= count ? rowsOf(all, rows)
                                                    : std::vector<std::string>();
    } catch (const std::filesystem::filesystem_error&) {  // it is not Unicode
        return {};
    }
}
