#pragma once

#include "platform/CArchive.h"
#include "platform/CArchiveException.h"

#include <sstream>
#include <string>

// The cause of the archive exception that work ends with; none if it goes through.
template <typename Work>
CArchiveException::Cause causeOf(Work work) {
    try {
        work();
    } catch (const CArchiveException& exception) {
        return exception.cause;
    }
    return CArchiveException::none;
}

// The bytes that an object stores.
template <typename Object>
std::string stored(Object& object) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    object.Serialize(archive);
    return stream.str();
}

// Has an object load such bytes.
template <typename Object>
CArchiveException::Cause load(Object& object, const std::string& bytes) {
    std::istringstream stream(bytes);
    CArchive archive(stream, CArchive::load);
    return causeOf([&] { object.Serialize(archive); });
}
