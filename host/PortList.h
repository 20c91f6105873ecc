#pragma once

#include "platform/CArchiveException.h"

#include <algorithm>
#include <vector>

// One entry per port, numbered from 0. Port counts come out of archives, so every access is
// checked, and a port that does not exist ends the load: an archive exception, cause badIndex.
template <typename T>
class PortList {
public:
    int size() const { return static_cast<int>(entries.size()); }
    bool has(int port) const { return port >= 0 && port < size(); }

    T& operator[](int port) { return entries[checked(port)]; }
    const T& operator[](int port) const { return entries[checked(port)]; }

    // Sets the number of ports: surplus entries go, new ones are copies of entry. A negative count
    // is 0.
    void resize(int count, const T& entry = T()) {
        entries.resize(static_cast<std::size_t>(std::max(count, 0)), entry);
    }
    void clear() { entries.clear(); }

    auto begin() { return entries.begin(); }
    auto end() { return entries.end(); }
    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }

private:
    std::size_t checked(int port) const {
        if (!has(port)) {
            AfxThrowArchiveException(CArchiveException::badIndex);
        }
        return static_cast<std::size_t>(port);
    }

    std::vector<T> entries;
};
