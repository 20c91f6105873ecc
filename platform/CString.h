#pragma once

#include <string>

// A text of the framework: bytes in Windows-1252, with value semantics. Windows1252.h converts from
// and to UTF-8. Memory that runs out leaves by std::bad_alloc.
class CString {
public:
    CString() = default;
    // The bytes up to the terminator; null gives the empty text.
    // NOLINTNEXTLINE(google-explicit-constructor): literals stand where a CString is asked for.
    CString(const char* text);
    // The first length bytes, whatever they are; none where length is not positive.
    CString(const char* text, int length);

    int GetLength() const;
    bool IsEmpty() const;
    // The bytes with a terminator, valid until the text changes.
    // NOLINTNEXTLINE(google-explicit-constructor): a CString stands where a literal does.
    operator const char*() const { return bytes.c_str(); }

    // Becomes the text that printf would write, however long. Arguments may point into this text.
    // Empty if an argument cannot be converted.
    [[gnu::format(printf, 2, 3)]] void Format(const char* format, ...);

    CString& operator+=(const CString& other);
    friend CString operator+(CString left, const CString& right) { return left += right; }

    // Negative, 0 or positive, byte by byte and case counting, up to and including the terminator:
    // what follows a zero byte plays no part.
    int Compare(const char* other) const;
    friend bool operator==(const CString& left, const CString& right) {
        return left.Compare(right) == 0;
    }
    friend bool operator==(const CString& left, const char* right) {
        return left.Compare(right) == 0;
    }

private:
    std::string bytes;
};
