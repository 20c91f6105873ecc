#pragma once

#include "platform/CString.h"
#include "platform/DialogResource.h"
#include "platform/userLanguage.h"

#include <cstddef>
#include <span>
#include <vector>

struct StringResource {
    unsigned id;
    unsigned language;
    const char* text;  // UTF-8
};

struct BinaryResource {
    unsigned id;
    unsigned language;
    const unsigned char* bytes;
    std::size_t size;
};

// The resources of one loaded library. Construction enters the tables into the chain, destruction
// takes them out; neither allocates. A library holds one as a global object, so that its resources
// are there exactly while it is loaded. The tables must outlive the object.
class ResourceLibrary {
public:
    ResourceLibrary(std::span<const StringResource> stringTable,
                    std::span<const BinaryResource> bitmapTable,
                    std::span<const BinaryResource> iconTable,
                    std::span<const DialogResource> dialogTable);
    ~ResourceLibrary();
    ResourceLibrary(const ResourceLibrary&) = delete;
    ResourceLibrary& operator=(const ResourceLibrary&) = delete;

private:
    friend class ResourceChain;

    std::span<const StringResource> strings;
    std::span<const BinaryResource> bitmaps;
    std::span<const BinaryResource> icons;
    std::span<const DialogResource> dialogs;
    ResourceLibrary* next;
};

// Lookup over all loaded libraries. The library loaded last that has the id in any language
// is asked: its entry for the user's language, else for English, else its first.
// The chain is guarded: lookups may run in several threads, and while libraries come and go. What
// lookups of bytes and dialogs return is not: it belongs to the library, and ends with it.
class ResourceChain {
public:
    // The text in Windows-1252, a copy; empty if no library has the id.
    static CString string(unsigned id);

    // The bytes of a whole BMP or ICO file; empty if no library has the id.
    static std::span<const unsigned char> bitmap(unsigned id);
    static std::span<const unsigned char> icon(unsigned id);

    // Null if no library has the id.
    static const DialogResource* dialog(unsigned id);

    // Languages that the answering library has the string in, in the order of its table.
    static std::vector<unsigned> stringLanguages(unsigned id);

private:
    template <typename Resource>
    static std::span<const Resource> findTable(std::span<const Resource> ResourceLibrary::*table,
                                               unsigned id);
    static std::span<const unsigned char> findBytes(
        std::span<const BinaryResource> ResourceLibrary::*table, unsigned id);
};
