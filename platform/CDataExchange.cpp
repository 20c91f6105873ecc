#include "platform/CDataExchange.h"

#include "platform/ResourceChain.h"

#include <algorithm>
#include <charconv>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

// The framework's own texts are in the resource chain, like those of any library; modules have
// smaller ids. %1 and %2 stand for the limits.
static constexpr unsigned messageWholeNumber = 61712, messageNumber = 61713, messageRange = 61714;
static constexpr StringResource messages[] = {
    {messageWholeNumber, languageGerman,
     "Bitte geben Sie eine ganze Zahl von 0 bis 4294967295 ein."},
    {messageWholeNumber, languageEnglish, "Please enter a whole number from 0 to 4294967295."},
    {messageWholeNumber, languageFrench, "Veuillez entrer un nombre entier de 0 à 4294967295."},
    {messageNumber, languageGerman,
     "Bitte geben Sie eine Zahl mit Dezimalpunkt ein, zum Beispiel 0.01 oder 1e-6."},
    {messageNumber, languageEnglish,
     "Please enter a number with a decimal point, such as 0.01 or 1e-6."},
    {messageNumber, languageFrench,
     "Veuillez entrer un nombre avec un point décimal, par exemple 0.01 ou 1e-6."},
    {messageRange, languageGerman, "Bitte geben Sie eine Zahl von %1 bis %2 ein."},
    {messageRange, languageEnglish, "Please enter a number from %1 to %2."},
    {messageRange, languageFrench, "Veuillez entrer un nombre de %1 à %2."},
};
static const ResourceLibrary library(messages, {}, {}, {});

std::span<DialogControl> CDataExchange::PrepareCtrl(unsigned id) {
    prepared = id;
    const auto found = std::find_if(controls.begin(), controls.end(),
                                    [id](const DialogControl& c) { return c.resource->id == id; });
    return {found, controls.end()};
}

void CDataExchange::Fail(CString message) const {
    throw Failure{prepared, std::move(message)};
}

void DDX_Radio(CDataExchange* exchange, unsigned id, std::int32_t& position) {
    const bool saving = exchange->m_bSaveAndValidate;
    const std::span<DialogControl> group = exchange->PrepareCtrl(id);
    if (saving && !group.empty()) {
        position = -1;
    }
    std::int32_t index = 0;
    for (DialogControl& control : group) {
        if (index > 0 && control.resource->startsGroup) {
            break;
        }
        if (control.resource->kind != ControlKind::radio) {
            continue;
        }
        if (!saving) {
            control.checked = index == position;
        } else if (control.checked) {
            position = index;
        }
        ++index;
    }
}

void DDX_Check(CDataExchange* exchange, unsigned id, std::int32_t& checked) {
    const std::span<DialogControl> box = exchange->PrepareCtrl(id);
    if (box.empty()) {
        return;
    }
    if (exchange->m_bSaveAndValidate) {
        checked = box.front().checked ? 1 : 0;
    } else {
        box.front().checked = checked != 0;
    }
}

void DDX_CBIndex(CDataExchange* exchange, unsigned id, std::int32_t& position) {
    const std::span<DialogControl> list = exchange->PrepareCtrl(id);
    if (list.empty()) {
        return;
    }
    DialogControl& control = list.front();
    if (exchange->m_bSaveAndValidate) {
        position = control.selection;
    } else {
        const bool inList = position >= 0 && position < std::ssize(control.entries);
        control.selection = inList ? position : -1;
    }
}

static std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t last = text.find_last_not_of(" \t");
    return text.substr(first, last + 1 - first);
}

static bool parse(std::string_view text, std::uint32_t& value) {
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end;
}

// The characters are tested first: words and hexadecimal digits are not numbers here. By a stream,
// since std::from_chars refuses a plus sign.
static bool parse(std::string_view text, double& value) {
    if (text.find_first_not_of("+-.0123456789Ee") != std::string_view::npos) {
        return false;
    }
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios::badbit);  // lets std::bad_alloc through
    return stream >> value && stream.peek() == std::istringstream::traits_type::eof();
}

static std::string format(std::uint32_t value) {
    return std::to_string(value);
}

static std::string format(double value) {
    char text[32];
    for (int digits = 15;; ++digits) {
        char* const end = std::to_chars(std::begin(text), std::end(text), value,
                                        std::chars_format::general, digits)
                              .ptr;
        double back = 0.0;
        if (digits == 17 || (parse({text, end}, back) && back == value)) {
            return {std::begin(text), end};
        }
    }
}

template <typename Number>
static void exchangeText(CDataExchange* exchange, unsigned id, Number& value, unsigned message) {
    const std::span<DialogControl> edit = exchange->PrepareCtrl(id);
    if (edit.empty()) {
        return;
    }
    CString& text = edit.front().text;
    if (!exchange->m_bSaveAndValidate) {
        text = format(value).c_str();
        return;
    }
    const std::string_view typed(text, static_cast<std::size_t>(text.GetLength()));
    Number number{};
    if (!parse(withoutBlanks(typed), number)) {
        exchange->Fail(ResourceChain::string(message));
    }
    value = number;
}

void DDX_Text(CDataExchange* exchange, unsigned id, std::uint32_t& value) {
    exchangeText(exchange, id, value, messageWholeNumber);
}

void DDX_Text(CDataExchange* exchange, unsigned id, double& value) {
    exchangeText(exchange, id, value, messageNumber);
}

void DDV_MinMaxDouble(CDataExchange* exchange, double value, double minimum, double maximum) {
    if (!exchange->m_bSaveAndValidate || (value >= minimum && value <= maximum)) {
        return;
    }
    std::string text(ResourceChain::string(messageRange));
    text.replace(text.find("%1"), 2, format(minimum));
    text.replace(text.find("%2"), 2, format(maximum));
    exchange->Fail(text.c_str());
}
