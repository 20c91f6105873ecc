#include "python/extension/Waiting.h"
#include "python/extension/arrays.h"
#include "python/extension/folding.h"
#include "python/extension/options.h"
#include "workbench/calls/fileCalls.h"
#include "workbench/calls/sweepCall.h"

#include <string>
#include <utility>
#include <vector>

namespace py = pybind11;

// Samples, facts, names of the channels.
static py::tuple given(Signal&& signal) {
    const Facts facts = Facts::of(signal.info);
    return py::make_tuple(arrayOf(std::move(signal.interleaved), signal.info.channels, false),
                          facts, signal.info.names);
}

static py::tuple readSignal(const std::string& path, const CallOptions& options) {
    Signal signal;
    Waiting().here([&] { signal = readFile(path, options); });
    return given(std::move(signal));
}

static void writeSignal(const std::string& path, const Array& array, const Facts& facts,
                        const std::vector<std::string>& names, const CallOptions& options) {
    const CallSignal signal = signalOf(array, facts);
    Waiting().here([&] { writeFile(path, signal, names, options); });
}

static py::tuple makeSweep(const CallOptions& options) {
    Signal signal;
    Waiting().here([&] { signal = sweepOf(options); });
    return given(std::move(signal));
}

void addSignals(py::module_& module) {
    py::class_<SignalAxis>(module, "Axis")
        .def(py::init<std::string, double, double, bool, double, double>())
        .def_readonly("name", &SignalAxis::name)
        .def_readonly("start", &SignalAxis::start)
        .def_readonly("step", &SignalAxis::step)
        .def_readonly("time", &SignalAxis::time);
    py::class_<Facts>(module, "Facts")
        .def(py::init<std::string, double, std::optional<SignalAxis>>())
        .def_readonly("name", &Facts::name)
        .def_readonly("rate", &Facts::rate)
        .def_readonly("axis", &Facts::axis);
    module.def("read", &readSignal);
    module.def("write", &writeSignal, py::arg("path"), py::arg("signal").noconvert(),
               py::arg("facts"), py::arg("names"), py::arg("options"));
    module.def("sweep", &makeSweep);
}
