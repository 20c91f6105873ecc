#include "workbench/system/Sha256.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <nettle/sha2.h>

struct Sha256::State {
    sha256_ctx context;
};

Sha256::Sha256() : state(std::make_unique<State>()) {
    sha256_init(&state->context);
}

Sha256::~Sha256() = default;

void Sha256::add(const std::uint8_t* bytes, std::size_t count) {
    sha256_update(&state->context, count, bytes);
}

std::string Sha256::hex() const {
    sha256_ctx closed = state->context;
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest = {};
    sha256_digest(&closed, digest.size(), digest.data());
    return fmt::format("{:02x}", fmt::join(digest, ""));
}
