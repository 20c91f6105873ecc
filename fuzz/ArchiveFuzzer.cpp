#include "fuzz/fuzz.h"
#include "fuzz/modules.h"
#include "host/TCError.h"
#include "platform/Desktop.h"
#include "platform/DialogResource.h"

#include <cstring>

// An input is a stored module. Whatever it holds, the module stays fit for use.

namespace {

// Messages go nowhere.
struct SilentDesktop : Desktop {
    SilentDesktop() {
        install(this);
        TCError::install([](const TCError& /*error*/) {});
    }
    int messageBox(const CString& /*text*/, const CString& /*caption*/,
                   unsigned /*style*/) override {
        return IDOK;
    }
    void runDialog(CDialog& /*dialog*/) override {}
} silentDesktop;

}  // namespace

// All that is asked of a module's ports, also for such as are not there.
static std::string describePorts(B_BasisModule& module) {
    std::string text = std::to_string(module.GetNoInput()) + std::to_string(module.GetNoOutput());
    for (int port = -1; port < 5; ++port) {
        for (const PORTTYPE side : {noPort, inputPort, outputPort}) {
            text += '|';
            text += module.GetPortType(side, port);
        }
    }
    return text;
}

static void nameAllPorts(B_BasisModule& module) {
    for (int port = -1; port < 5; ++port) {
        require(std::strlen(module.GetInputName(port)) < 27 &&
                    std::strlen(module.GetOutputName(port)) < 27,
                "port names fit their buffer");
    }
}

static bool hasFewIterations(const std::string& graph) {
    // maxIterations stands 24 bytes before the end.
    return graph[graph.size() - 22] == 0 && graph[graph.size() - 21] == 0;
}

static void runOnce(B_BasisModule& module) {
    static constexpr double first[] = {1, 2, 3, 4, 5}, second[] = {1, -0.5, 0.25, 0, 1};
    BlockStream inputs[2], outputs[3];
    inputs[0].writeBlock(0, first, 5);
    inputs[0].writeBlock(2, first, 2);
    inputs[1].writeBlock(0, second, 5);
    inputs[1].writeBlock(2, second, 2);
    for (int port = 0; port < 3; ++port) {
        module.SetInputStream(port, port < 2 ? &inputs[port] : nullptr);
        module.AddOutputStream(port, &outputs[port]);
    }
    module.Init();
    module.Fetch();
    const int code = module.Process();
    require(code == 0 || code == -5 || code == -1, "Process answers by one of its codes");
    require(outputs[0].waitingBlocks() <= 2, "there are no more results than pairs of blocks");
    module.Done();
    module.DeleteStreams();
}

void fuzzOne(Bytes input) {
    const std::string bytes(input.begin(), input.end());
    const ModuleHandle module = makeModule();
    const std::string portsBefore = describePorts(*module);
    const bool loaded = loads(*module, bytes);
    const std::string again = stored(*module);
    if (loaded) {
        const ModuleHandle second = makeModule();
        require(loads(*second, again) && stored(*second) == again,
                "store, load, store is identity");
        require(describePorts(*second) == describePorts(*module), "a load gives the ports too");
        require(bytes.find(again.substr(9)) != std::string::npos,
                "what was read is what is stored");
    } else {
        require(describePorts(*module) == portsBefore, "a load that fails touches no port");
    }
    nameAllPorts(*module);
    std::ostringstream report;
    CArchive archive(report, CArchive::store);
    module->WriteReport(archive);
    require(report.str().ends_with("\r\n"), "the report has whole lines");
    if (hasFewIterations(again)) {
        runOnce(*module);
    }
}
