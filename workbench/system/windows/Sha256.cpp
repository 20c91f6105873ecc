#include "workbench/system/Sha256.h"

#include "workbench/messages/Failure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
// The second needs the first.
// clang-format off
#include <windows.h>
#include <bcrypt.h>
// clang-format on

static void check(NTSTATUS status) {
    if (status < 0) {
        throw Failure(fmt::format("the system refuses SHA-256 (bcrypt.dll, status {:#x})",
                                  static_cast<unsigned long>(status)));
    }
}

struct Sha256::State {
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (hash != nullptr) {
            BCryptDestroyHash(hash);
        }
        if (provider != nullptr) {
            BCryptCloseAlgorithmProvider(provider, 0);
        }
    }

    BCRYPT_ALG_HANDLE provider = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
};

Sha256::Sha256() : state(std::make_unique<State>()) {
    check(BCryptOpenAlgorithmProvider(&state->provider, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    check(BCryptCreateHash(state->provider, &state->hash, nullptr, 0, nullptr, 0, 0));
}

Sha256::~Sha256() = default;

void Sha256::add(const std::uint8_t* bytes, std::size_t count) {
    constexpr std::size_t most = std::size_t{1} << 30;  // the library counts in 32 bits
    for (std::size_t done = 0; done < count; done += most) {
        // The library only reads, although its parameter is not a constant.
        check(BCryptHashData(state->hash, const_cast<PUCHAR>(bytes + done),
                             static_cast<ULONG>(std::min(most, count - done)), 0));
    }
}

std::string Sha256::hex() const {
    State closed;
    check(BCryptDuplicateHash(state->hash, &closed.hash, nullptr, 0, 0));
    std::array<std::uint8_t, 32> digest = {};
    check(BCryptFinishHash(closed.hash, digest.data(), static_cast<ULONG>(digest.size()), 0));
    return fmt::format("{:02x}", fmt::join(digest, ""));
}
