#include "platform/CString.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

CString::CString(const char* text) : bytes(text == nullptr ? "" : text) {}

CString::CString(const char* text, int length)
    : bytes(text, static_cast<std::size_t>(std::max(length, 0))) {}

int CString::GetLength() const {
    return static_cast<int>(bytes.size());
}

bool CString::IsEmpty() const {
    return bytes.empty();
}

void CString::Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it is initialised, see above.
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    // vsnprintf writes a terminator where std::string has its own.
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    if (length > 0) {
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    bytes = std::move(text);
}

CString& CString::operator+=(const CString& other) {
    bytes += other.bytes;
    return *this;
}

int CString::Compare(const char* other) const {
    return std::strcmp(bytes.c_str(), other);
}
