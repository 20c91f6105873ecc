#pragma once

#include "platform/CString.h"

#include <exception>
#include <utility>

// Why a load or a store ended.
class CArchiveException : public std::exception {
public:
    enum Cause {
        none = 0,
        genericException = 1,  // the stream did not take what was written
        readOnly = 2,          // a write to an archive that loads
        endOfFile = 3,         // the stream ended before the value did
        writeOnly = 4,         // a read from an archive that stores
        badIndex = 5,          // a number of something that does not exist
        badClass = 6,
        badSchema = 7  // the data are those of another version
    };

    CArchiveException(Cause why, CString file) : cause(why), fileName(std::move(file)) {}

    // One sentence about the cause, without the file name.
    const char* what() const noexcept override;

    Cause cause;
    CString fileName;  // empty where the archive has no name
};

[[noreturn]] void AfxThrowArchiveException(CArchiveException::Cause cause,
                                           const char* fileName = nullptr);
