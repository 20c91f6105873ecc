#include "platform/CArchiveException.h"

const char* CArchiveException::what() const noexcept {
    switch (cause) {
        case none:
            return "no error";
        case genericException:
            return "the archive cannot be written";
        case readOnly:
            return "the archive is open for loading and cannot be written";
        case endOfFile:
            return "the archive ends too early";
        case writeOnly:
            return "the archive is open for storing and cannot be read";
        case badIndex:
            return "the archive names a port or entry that is not there";
        case badClass:
            return "the archive holds an object of another class";
        case badSchema:
            return "the archive is of an incompatible version";
    }
    return "the archive failed for an unknown cause";
}

void AfxThrowArchiveException(CArchiveException::Cause cause, const char* fileName) {
    throw CArchiveException(cause, fileName);
}
