#pragma once

#include "platform/CString.h"

#include <string>
#include <string_view>

// Windows-1252 and Unicode agree except for the bytes 0x80 to 0x9F. Of these, 27 have characters of
// their own; the five others (81, 8D, 8F, 90, 9D) stand for the control characters of the same
// number, so that every text comes back from UTF-8 as it was.
std::string toUtf8(const CString& text);

// A character that Windows-1252 does not have becomes one '?', and so does each malformed or
// cut-off sequence.
CString fromUtf8(std::string_view text);
