#include "library/LiveHandles.h"

#include "workbench/messages/Failure.h"

#include <mutex>
#include <new>

// A list through the handles themselves takes no memory, and is there until the last of them is
// closed, however late that is.
static constinit std::mutex guard;
static constinit fendra* first = nullptr;

void fendra::say(const char* text) noexcept {
    try {
        copy = text;
        message = copy.c_str();
    } catch (const std::bad_alloc&) {
        message = noMemoryLeft;
    }
}

LiveHandles::Lock::Lock() {
    guard.lock();
}

LiveHandles::Lock::~Lock() {
    guard.unlock();
}

fendra* LiveHandles::find(const fendra* handle) {
    fendra* candidate = first;
    while (candidate != nullptr && candidate != handle) {
        candidate = candidate->next;
    }
    return candidate;
}

void LiveHandles::add(fendra* handle) {
    const Lock lock;
    handle->next = first;
    first = handle;
}

bool LiveHandles::remove(const fendra* handle) {
    const Lock lock;
    fendra** link = &first;
    while (*link != nullptr && *link != handle) {
        link = &(*link)->next;
    }
    if (*link == nullptr || (*link)->runs) {
        return false;
    }
    *link = handle->next;
    return true;
}

fendra* LiveHandles::begin(const fendra* handle) {
    const Lock lock;
    fendra* const found = find(handle);
    if (found == nullptr || found->runs) {
        return nullptr;
    }
    found->runs = true;
    return found;
}

void LiveHandles::end(fendra* handle) {
    const Lock lock;
    handle->runs = false;
}

const char* LiveHandles::refusal(const fendra* handle) {
    if (handle == nullptr) {
        return "the handle is null; open one with fendra_open";
    }
    const Lock lock;
    return find(handle) == nullptr
               ? "the handle is closed, or never was one; open one with fendra_open"
               : "the handle runs; wait until that call has returned";
}
