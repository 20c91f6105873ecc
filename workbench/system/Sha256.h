#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

// SHA-256 (NIST, FIPS 180-4, Secure Hash Standard, 2015), from a library of the system.
class Sha256 {
public:
    Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;
    ~Sha256();

    // The next bytes of the message.
    void add(const std::uint8_t* bytes, std::size_t count);

    // 64 lower-case hexadecimal digits over all that was added so far.
    [[nodiscard]] std::string hex() const;

private:
    struct State;
    std::unique_ptr<State> state;
};
