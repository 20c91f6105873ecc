#include "python/extension/arrays.h"
#include "python/extension/folding.h"
#include "workbench/calls/CallOptions.h"
#include "workbench/calls/CallSignal.h"
#include "workbench/messages/Failure.h"

#include <pybind11/pybind11.h>

#include <exception>
#include <new>
#include <stdexcept>

namespace py = pybind11;

namespace {

// Classes of exceptions, which are the package's own. They live as long as the process.
struct Classes {
    PyObject *failed = nullptr, *wrongOption = nullptr, *wrongSignal = nullptr, *noMemory = nullptr;
};

}  // namespace

static Classes classes;

static PyObject* classOf(const char* name) {
    return py::module_::import("fendra.errors").attr(name).cast<py::object>().release().ptr();
}

// Text that a file or its name gave may not be UTF-8.
static void raise(PyObject* type, const std::exception& error) {
    const std::string text = error.what();
    const auto size = static_cast<Py_ssize_t>(text.size());
    const auto message =
        py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8(text.data(), size, "replace"));
    PyErr_SetObject(type, message.ptr());
}

static void translate(std::exception_ptr thrown) {
    try {
        std::rethrow_exception(std::move(thrown));
    } catch (const WrongOption& error) {
        raise(classes.wrongOption, error);
    } catch (const WrongSignal& error) {
        raise(classes.wrongSignal, error);
    } catch (const Failure& error) {
        raise(error.what() == std::string(noMemoryLeft) ? classes.noMemory : classes.failed, error);
    } catch (const std::bad_alloc&) {
        raise(classes.noMemory, Failure(noMemoryLeft));
    } catch (const std::length_error&) {  // a size beyond what vectors hold
        raise(classes.noMemory, Failure(noMemoryLeft));
    }
}

// Whatever is looked up in Python once is so here: while a static constant waits for the lock of
// the interpreter, whoever has that may wait for the constant.
PYBIND11_MODULE(_fendra, module) {
    classes = {classOf("Error"), classOf("OptionError"), classOf("SignalError"),
               classOf("MemoryExhausted")};
    static_cast<void>(Array(0));
    module.attr("version") = FENDRA_VERSION;
    py::register_local_exception_translator(&translate);
    addSignals(module);
    addFolding(module);
}
