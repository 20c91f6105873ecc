#include "library/fendra.h"

#include "library/LiveHandles.h"
#include "library/Session.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/FendraSettings.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>

namespace {

// A call that is under way on a handle.
class Call {
public:
    explicit Call(const fendra* called) : handle(LiveHandles::begin(called)) {}
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call() {
        if (handle != nullptr) {
            LiveHandles::end(handle);
        }
    }

    fendra* const handle;  // null: the call is refused
};

}  // namespace

// What a call ends with that throws what is being handled.
static int codeOf(fendra& handle) noexcept {
    const auto end = [&](int code, const char* text) {
        handle.say(text);
        return code;
    };
    try {
        throw;
    } catch (const WrongOption& wrong) {
        return end(FENDRA_BAD_ARGUMENT, wrong.what());
    } catch (const WrongSignal& wrong) {
        return end(FENDRA_BAD_ARGUMENT, wrong.what());
    } catch (const Stopped& stopped) {
        return end(FENDRA_STOPPED, stopped.what());
    } catch (const std::bad_alloc&) {
        return end(FENDRA_NO_MEMORY, noMemoryLeft);
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        return end(FENDRA_NO_MEMORY, noMemoryLeft);
    } catch (const std::exception& failure) {
        return end(FENDRA_FAILED, failure.what());
    } catch (...) {  // of an observer, which may not
        return end(FENDRA_FAILED, "the observer threw an exception; let it return instead");
    }
}

template <typename Work>
static int call(const fendra* handle, Work work) noexcept {
    const Call call(handle);
    if (call.handle == nullptr) {
        return FENDRA_BAD_ARGUMENT;
    }
    try {
        work(call.handle->session);
        call.handle->say("");
        return FENDRA_OK;
    } catch (...) {
        return codeOf(*call.handle);
    }
}

const char* fendra_version(void) {
    return FENDRA_VERSION;
}

fendra* fendra_open(const char* module) {
    try {
        auto handle = std::make_unique<fendra>(module);
        handle->say(handle->session.refusalOfModule().c_str());
        LiveHandles::add(handle.get());
        return handle.release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void fendra_close(fendra* handle) {
    if (LiveHandles::remove(handle)) {
        delete handle;
    }
}

int fendra_set(fendra* handle, const char* option, const char* value) {
    return call(handle, [&](Session& session) {
        if (option == nullptr) {
            throw WrongOption("the option is null; give its word, as in max-iterations");
        }
        session.set(option, value);
    });
}

void fendra_observe(fendra* handle, int (*tell)(void* with, double share), void* with) {
    const Call call(handle);
    if (call.handle != nullptr) {
        call.handle->session.observe(tell, with);
    }
}

static int run(fendra* handle, std::int32_t direction, const Samples& signal,
               const Samples& kernel) {
    return call(handle, [&](Session& session) { session.run(direction, signal, kernel); });
}

int fendra_convolve(fendra* handle, const double* signal, size_t n, const double* kernel,
                    size_t m) {
    return run(handle, FendraSettings::convolution, {signal, n, 1}, {kernel, m, 1});
}

int fendra_deconvolve(fendra* handle, const double* signal, size_t n, const double* kernel,
                      size_t m) {
    return run(handle, FendraSettings::deconvolution, {signal, n, 1}, {kernel, m, 1});
}

int fendra_convolve_channels(fendra* handle, const double* signal, size_t n, size_t channels,
                             const double* kernel, size_t m, size_t kernel_channels) {
    return run(handle, FendraSettings::convolution, {signal, n, channels},
               {kernel, m, kernel_channels});
}

int fendra_deconvolve_channels(fendra* handle, const double* signal, size_t n, size_t channels,
                               const double* kernel, size_t m, size_t kernel_channels) {
    return run(handle, FendraSettings::deconvolution, {signal, n, channels},
               {kernel, m, kernel_channels});
}

// What look gives for the result of a handle, or other if it has none.
template <typename Look, typename Value>
static Value ofResult(const fendra* handle, Look look, Value other) {
    return LiveHandles::read(
        handle,
        [&](const fendra& live) {
            const CallResult* const result = live.session.result();
            return result != nullptr ? look(*result) : other;
        },
        other);
}

size_t fendra_length(const fendra* handle) {
    return ofResult(
        handle, [](const CallResult& result) { return static_cast<std::size_t>(result.samples); },
        std::size_t{0});
}

size_t fendra_channels(const fendra* handle) {
    return ofResult(
        handle, [](const CallResult& result) { return static_cast<std::size_t>(result.channels); },
        std::size_t{0});
}

const double* fendra_result(const fendra* handle) {
    return ofResult(
        handle, [](const CallResult& result) { return result.value.data(); },
        static_cast<const double*>(nullptr));
}

int fendra_band(const fendra* handle, const double** lower, const double** upper) {
    return call(handle, [&](const Session& session) {
        if (lower == nullptr || upper == nullptr) {
            throw WrongSignal("a null pointer takes no bounds; give two that are to be set");
        }
        const CallResult& result = session.requireResult();
        const bool has = !result.lower.empty();
        *lower = has ? result.lower.data() : nullptr;
        *upper = has ? result.upper.data() : nullptr;
    });
}

const char* fendra_record(const fendra* handle) {
    const char* text = "";
    call(handle, [&](Session& session) { text = session.record().c_str(); });
    return text;
}

const char* fendra_message(const fendra* handle) {
    const char* const text = LiveHandles::read(
        handle, [](const fendra& live) { return live.message; }, static_cast<const char*>(nullptr));
    return text != nullptr ? text : LiveHandles::refusal(handle);
}
