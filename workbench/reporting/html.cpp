#include "workbench/reporting/html.h"

#include "workbench/messages/Printable.h"
#include "workbench/system/Sha256.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <vector>

static std::string_view escaped(char letter) {
    switch (letter) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return {};
    }
}

std::string htmlText(std::string_view text) {
    std::string html;
    for (const char letter : printable(text)) {
        const std::string_view entity = escaped(letter);
        html += entity.empty() ? std::string_view(&letter, 1) : entity;
    }
    return html;
}

// Outside strings JSON has none of these signs.
std::string scriptData(const nlohmann::ordered_json& value) {
    using Json = nlohmann::ordered_json;
    std::string data;
    for (const char letter : value.dump(-1, ' ', true, Json::error_handler_t::replace)) {
        switch (letter) {
            case '<':
                data += "\\u003c";
                break;
            case '>':
                data += "\\u003e";
                break;
            case '&':
                data += "\\u0026";
                break;
            default:
                data += letter;
        }
    }
    return data;
}

// S. Josefsson, "The Base16, Base32, and Base64 Data Encodings", RFC 4648 (2006), section 4.
static std::string base64(const std::vector<std::uint8_t>& bytes) {
    static constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8U | (k < count ? bytes[i + k] : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= count ? alphabet[group >> (18U - 6U * k) & 63U] : '=';
        }
    }
    return text;
}

std::string policySource(std::string_view text) {
    Sha256 hash;
    hash.add(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    const std::string digits = hash.hex();
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char* const first = digits.data() + 2 * i;
        std::from_chars(first, first + 2, bytes[i], 16);
    }
    return "'sha256-" + base64(bytes) + "'";
}
