#pragma once

#include <string_view>
#include <vector>

// How a file stores its samples. Integers have their full scale at 1.0. automatic is float64, or
// pcm24 in a format that holds integers alone.
enum class Encoding { automatic, pcm16, pcm24, pcm32, float32, float64 };

struct EncodingRow {
    Encoding encoding;
    const char* word;  // "pcm16"
    int bytes;         // of a sample; 0: automatic
    bool integer;

    static const std::vector<EncodingRow>& all();
    static const EncodingRow& of(Encoding encoding);
    // Null if the word stands for none.
    static const EncodingRow* named(std::string_view word);

    // What a sample is when it is read again.
    [[nodiscard]] double stored(double sample) const;
};
