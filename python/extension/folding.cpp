#include "python/extension/folding.h"

#include "python/extension/Waiting.h"
#include "python/extension/arrays.h"
#include "python/extension/options.h"
#include "workbench/calls/CompareCall.h"
#include "workbench/calls/FoldCall.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleLibrary.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace py = pybind11;

// The module that lies beside the libraries of this one.
static std::shared_ptr<const ModuleLibrary> fendra() {
    static const auto library =
        std::make_shared<const ModuleLibrary>(ModuleLibrary::standardFile());
    return library;
}

static bool isTable(const Array& array) {
    return array.ndim() == 2;
}

namespace {

// A result with its record, which is made when it is asked for.
struct Folded {
    Array value;
    std::optional<Array> lower, upper;
    Facts facts;
    std::function<std::string()> makeRecord;

    [[nodiscard]] std::string record() const {
        std::string made;
        Waiting().here([&] { made = makeRecord(); });
        return made;
    }
};

// What a comparison has of one method.
struct Compared {
    std::string method, failure;
    double misfit, roughness;
    std::optional<double> error;
    std::vector<std::string> remarks;
    Array value;
    Facts facts;
};

}  // namespace

static Folded folded(CallResult&& result, bool table) {
    const auto bound = [&](std::vector<double>& samples) {
        return samples.empty() ? std::nullopt
                               : std::optional(arrayOf(std::move(samples), result.channels, table));
    };
    return {arrayOf(std::move(result.value), result.channels, table),
            bound(result.lower),
            bound(result.upper),
            {"the result", result.rate, result.axis},
            std::move(result.makeRecord)};
}

// Work of a moment is not worth a thread of its own.
static bool mayTakeThreads(const CallSignal& signal, const CallSignal& kernel) {
    constexpr std::int64_t many = 32768;
    return signal.channels > 1 || kernel.channels > 1 || signal.samples + kernel.samples > many;
}

static Folded fold(const FoldCall& call, const Array& signal, const Array& kernel,
                   const Facts& signalFacts, const Facts& kernelFacts) {
    const CallSignal first = signalOf(signal, signalFacts), second = signalOf(kernel, kernelFacts);
    CallResult result;
    Waiting waiting;
    const auto work = [&] { result = call.run(first, second, waiting); };
    if (mayTakeThreads(first, second)) {
        waiting.apart(work);
    } else {
        waiting.here(work);
    }
    return folded(std::move(result), isTable(signal) || isTable(kernel));
}

static Compared compared(MethodOutcome&& outcome, bool table) {
    const RunRecord& record = outcome.record;
    const int channels = std::max(1, outcome.result.info.channels);
    return {outcome.method->word,
            outcome.failure,
            outcome.misfit,
            outcome.roughness,
            record.error ? std::optional(record.error->relativeError) : std::nullopt,
            record.remarks,
            arrayOf(std::move(outcome.result.interleaved), channels, table),
            {outcome.method->word, outcome.result.info.rate, outcome.result.info.axis}};
}

// The rows, the table for people, and the record.
static py::tuple compare(const CompareCall& call, const Array& signal, const Array& kernel,
                         const std::optional<Array>& truth, const Facts& signalFacts,
                         const Facts& kernelFacts, const Facts& truthFacts) {
    const CallSignal first = signalOf(signal, signalFacts), second = signalOf(kernel, kernelFacts);
    const CallSignal known = truth ? signalOf(*truth, truthFacts) : CallSignal{};
    std::vector<MethodOutcome> outcomes;
    Waiting waiting;
    waiting.apart([&] { outcomes = call.run(first, second, truth ? &known : nullptr, waiting); });
    const std::string table = tableOf(outcomes, truth.has_value()), record = recordOf(outcomes);
    py::list rows;
    for (MethodOutcome& outcome : outcomes) {
        rows.append(compared(std::move(outcome), isTable(signal) || isTable(kernel)));
    }
    return py::make_tuple(rows, table, record);
}

void addFolding(py::module_& module) {
    py::class_<Folded>(module, "Folded")
        .def_readonly("value", &Folded::value)
        .def_readonly("lower", &Folded::lower)
        .def_readonly("upper", &Folded::upper)
        .def_readonly("facts", &Folded::facts)
        .def("record", &Folded::record);
    py::class_<FoldCall>(module, "Fold")
        .def(py::init([](bool deconvolves, const CallOptions& options) {
            return std::make_unique<FoldCall>(
                fendra(), deconvolves ? FendraSettings::deconvolution : FendraSettings::convolution,
                options);
        }))
        .def("run", &fold, py::arg("signal").noconvert(), py::arg("kernel").noconvert(),
             py::arg("signalFacts"), py::arg("kernelFacts"));
    py::class_<Compared>(module, "Compared")
        .def_readonly("method", &Compared::method)
        .def_readonly("failure", &Compared::failure)
        .def_readonly("misfit", &Compared::misfit)
        .def_readonly("roughness", &Compared::roughness)
        .def_readonly("error", &Compared::error)
        .def_readonly("remarks", &Compared::remarks)
        .def_readonly("value", &Compared::value)
        .def_readonly("facts", &Compared::facts);
    py::class_<CompareCall>(module, "Compare")
        .def(py::init([](const CallOptions& options) {
            return std::make_unique<CompareCall>(fendra(), options);
        }))
        .def("run", &compare, py::arg("signal").noconvert(), py::arg("kernel").noconvert(),
             py::arg("truth").noconvert().none(true), py::arg("signalFacts"),
             py::arg("kernelFacts"), py::arg("truthFacts"));
}
