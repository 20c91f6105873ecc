#pragma once

#include "library/Session.h"
#include "library/fendra.h"

#include <string>

// What a handle is within the library.
struct fendra {  // NOLINT(readability-identifier-naming): as C knows it
    explicit fendra(const char* file) : session(file) {}

    // Keeps what the handle has to say. The text is copied; where memory does not suffice for
    // that, it says so instead.
    void say(const char* text) noexcept;

    Session session;
    std::string copy;
    const char* message = "";
    bool runs = false;  // a call is under way
    fendra* next = nullptr;
};

// The handles that are open, of all threads. What a caller gives as a handle is looked for among
// them before anything is read from it.
class LiveHandles {
public:
    static void add(fendra* handle);
    // Whether it was among them and does not run: it is not among them any more.
    static bool remove(const fendra* handle);

    // Begins a call: null if the handle is not among them, or runs.
    static fendra* begin(const fendra* handle);
    static void end(fendra* handle);

    // What can be read from a handle at once, while none begins or ends: what look gives for it, or
    // other if it is not among them or runs. look throws nothing.
    template <typename Look, typename Value>
    static Value read(const fendra* handle, Look look, Value other) {
        const Lock lock;
        const fendra* const found = find(handle);
        return found != nullptr && !found->runs ? look(*found) : other;
    }

    // Why begin gives null.
    static const char* refusal(const fendra* handle);

private:
    // While it lives, nobody else reads or changes the list.
    class Lock {
    public:
        Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;
        ~Lock();
    };

    static fendra* find(const fendra* handle);
};
