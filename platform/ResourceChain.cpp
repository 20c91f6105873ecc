#include "platform/ResourceChain.h"

#include "platform/Windows1252.h"

#include <algorithm>
#include <mutex>

// Both are ready whenever a constructor asks: libraries enter the chain while globals are made. Not
// every system's mutex can be a constant, so it is made when it is first locked.
static constinit ResourceLibrary* lastLoaded = nullptr;
static std::mutex& chainGuard() {
    static std::mutex guard;
    return guard;
}

ResourceLibrary::ResourceLibrary(std::span<const StringResource> stringTable,
                                 std::span<const BinaryResource> bitmapTable,
                                 std::span<const BinaryResource> iconTable,
                                 std::span<const DialogResource> dialogTable)
    : strings(stringTable), bitmaps(bitmapTable), icons(iconTable), dialogs(dialogTable) {
    const std::lock_guard lock(chainGuard());
    next = lastLoaded;
    lastLoaded = this;
}

ResourceLibrary::~ResourceLibrary() {
    const std::lock_guard lock(chainGuard());
    ResourceLibrary** link = &lastLoaded;
    while (*link != this) {
        link = &(*link)->next;
    }
    *link = next;
}

// The entry of the table for the id in the user's language, else in English, else the first; null
// if the id is not there.
template <typename Resource>
static const Resource* findResource(std::span<const Resource> table, unsigned id) {
    const unsigned language = userLanguage();
    const Resource* best = nullptr;
    int bestRank = 0;
    for (const Resource& resource : table) {
        const int rank = resource.language == language          ? 3
                         : resource.language == languageEnglish ? 2
                                                                : 1;
        if (resource.id == id && rank > bestRank) {
            best = &resource;
            bestRank = rank;
        }
    }
    return best;
}

// The table of the library that answers for the id; empty if none does. The chain is locked.
template <typename Resource>
std::span<const Resource> ResourceChain::findTable(
    std::span<const Resource> ResourceLibrary::*table, unsigned id) {
    for (const ResourceLibrary* library = lastLoaded; library != nullptr; library = library->next) {
        const std::span<const Resource> candidates = library->*table;
        if (std::any_of(candidates.begin(), candidates.end(),
                        [id](const Resource& resource) { return resource.id == id; })) {
            return candidates;
        }
    }
    return {};
}

std::span<const unsigned char> ResourceChain::findBytes(
    std::span<const BinaryResource> ResourceLibrary::*table, unsigned id) {
    const std::lock_guard lock(chainGuard());
    const BinaryResource* const found = findResource(findTable(table, id), id);
    return found != nullptr ? std::span(found->bytes, found->size)
                            : std::span<const unsigned char>();
}

CString ResourceChain::string(unsigned id) {
    const std::lock_guard lock(chainGuard());
    const StringResource* const found = findResource(findTable(&ResourceLibrary::strings, id), id);
    return found != nullptr ? fromUtf8(found->text) : CString();
}

std::span<const unsigned char> ResourceChain::bitmap(unsigned id) {
    return findBytes(&ResourceLibrary::bitmaps, id);
}

std::span<const unsigned char> ResourceChain::icon(unsigned id) {
    return findBytes(&ResourceLibrary::icons, id);
}

const DialogResource* ResourceChain::dialog(unsigned id) {
    const std::lock_guard lock(chainGuard());
    return findResource(findTable(&ResourceLibrary::dialogs, id), id);
}

std::vector<unsigned> ResourceChain::stringLanguages(unsigned id) {
    const std::lock_guard lock(chainGuard());
    std::vector<unsigned> languages;
    for (const StringResource& resource : findTable(&ResourceLibrary::strings, id)) {
        if (resource.id == id) {
            languages.push_back(resource.language);
        }
    }
    return languages;
}
