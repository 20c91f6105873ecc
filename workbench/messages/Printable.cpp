#include "workbench/messages/Printable.h"

#include <algorithm>

// Length of the character at the front of text, 0 if it is a control character or not UTF-8.
static std::size_t characterLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return lead < 0x20 || lead == 0x7f ? 0 : 1;
    }
    if (lead < 0xc2 || lead > 0xf4) {
        return 0;
    }
    const std::size_t length = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    if (text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0U) != 0x80) {
            return 0;
        }
    }
    const bool control = lead == 0xc2 && byte(1) < 0xa0;
    return control ? 0 : length;
}

std::string printable(std::string_view text, std::size_t maximum) {
    std::string shown;
    while (!text.empty()) {
        if (shown.size() >= maximum) {
            return shown + "...";
        }
        const std::size_t length = characterLength(text);
        shown += length == 0 ? std::string_view("?") : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return shown;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0 && static_cast<unsigned char>(text[0]) >= 0x80) {
            return false;
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return true;
}
