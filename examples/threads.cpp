// Four signals at once, by a class that closes its handle and throws what went wrong.
#include <cmath>
#include <fendra.h>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

class Fendra {
public:
    Fendra() : handle(fendra_open(nullptr)) {}

    void set(const std::string& option, const std::string& value) {
        check(fendra_set(handle.get(), option.c_str(), value.c_str()));
    }

    std::vector<double> convolve(const std::vector<double>& signal,
                                 const std::vector<double>& kernel) {
        check(fendra_convolve(handle.get(), signal.data(), signal.size(), kernel.data(),
                              kernel.size()));
        return result();
    }

    std::vector<double> deconvolve(const std::vector<double>& signal,
                                   const std::vector<double>& kernel) {
        check(fendra_deconvolve(handle.get(), signal.data(), signal.size(), kernel.data(),
                                kernel.size()));
        return result();
    }

private:
    struct Close {
        void operator()(fendra* open) const { fendra_close(open); }
    };

    void check(int code) const {
        if (code != FENDRA_OK) {
            throw std::runtime_error(fendra_message(handle.get()));
        }
    }

    std::vector<double> result() const {
        const double* samples = fendra_result(handle.get());
        return {samples, samples + fendra_length(handle.get())};
    }

    std::unique_ptr<fendra, Close> handle;
};

// An echo is added to a tone, and taken away again. A handle is for one thread at a time, so each
// thread has its own. What is off in the end, at most:
static double echoed(int number) {
    std::vector<double> tone(1000), echo(tone.size(), 0.0);
    for (std::size_t i = 0; i < tone.size(); ++i) {
        tone[i] = std::sin(0.01 * number * static_cast<double>(i));
    }
    echo[0] = 1.0;
    echo[static_cast<std::size_t>(50 * number)] = 0.5;

    Fendra fendra;
    fendra.set("jobs", "1");
    const std::vector<double> dry = fendra.deconvolve(fendra.convolve(tone, echo), echo);
    double most = 0.0;
    for (std::size_t i = 0; i < tone.size(); ++i) {
        most = std::fmax(most, std::fabs(dry[i] - tone[i]));
    }
    return most;
}

int main() {
    std::vector<double> errors(4, HUGE_VAL);
    std::vector<std::thread> threads;
    for (int number = 1; number <= 4; ++number) {
        threads.emplace_back([&errors, number] {
            try {
                errors.at(static_cast<std::size_t>(number - 1)) = echoed(number);
            } catch (const std::exception& error) {
                std::cerr << "fendra: " << error.what() << "\n";
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    bool ok = true;
    for (const double error : errors) {
        std::cout << "off by " << error << "\n";
        ok = ok && error < 1e-12;
    }
    return ok ? 0 : 1;
}
