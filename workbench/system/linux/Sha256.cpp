#include "workbench/system/Sha256.h"

#include <sha2.h>

#include <array>

struct Sha256::State {
    SHA2_CTX context;
};

Sha256::Sha256() : state(std::make_unique<State>()) {
    SHA256Init(&state->context);
}

Sha256::~Sha256() = default;

void Sha256::add(const std::uint8_t* bytes, std::size_t count) {
    SHA256Update(&state->context, bytes, count);
}

std::string Sha256::hex() const {
    SHA2_CTX closed = state->context;
    std::array<char, SHA256_DIGEST_STRING_LENGTH> digits = {};
    return SHA256End(&closed, digits.data());
}
