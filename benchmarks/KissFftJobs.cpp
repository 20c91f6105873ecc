#include "benchmarks/PeerJobs.h"
#include "benchmarks/peers.h"

#include <kissfft/kissfft.hh>

namespace {

class TransformJob : public ComplexJob {
public:
    explicit TransformJob(Size size)
        : ComplexJob(size), transformer(input.size(), false), output(input.size()) {}
    void run() override { transformer.transform(input.data(), output.data()); }
    [[nodiscard]] std::vector<double> result() const override { return partsOf(output); }

private:
    kissfft<double> transformer;
    Signal output;
};

}  // namespace

MakeJob kissFft::transform() {
    return make<TransformJob>();
}
