#pragma once

#include <vector>

// A growing array of values, counted by int. An index outside 0 .. GetSize() - 1 leaves by
// std::out_of_range.
template <typename T>
class CArray {
public:
    int GetSize() const { return static_cast<int>(values.size()); }
    const T& GetAt(int index) const { return values.at(static_cast<std::size_t>(index)); }
    T& operator[](int index) { return values.at(static_cast<std::size_t>(index)); }
    const T& operator[](int index) const { return GetAt(index); }

    // Appends the value and returns its index.
    int Add(const T& value) {
        values.push_back(value);
        return GetSize() - 1;
    }
    void RemoveAll() { values.clear(); }

private:
    std::vector<T> values;
};
