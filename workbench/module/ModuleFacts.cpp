#include "workbench/module/ModuleFacts.h"

#include "host/B_BasisModule.h"
#include "platform/Windows1252.h"
#include "workbench/methods/Setting.h"
#include "workbench/module/FendraModule.h"

#include <fmt/format.h>

#include <sstream>

static std::string port(const CString& name, const CString& type) {
    return fmt::format("{} ({})", toUtf8(name), toUtf8(type));
}

static ModulePorts currentPorts(B_BasisModule& module, const std::string& settings) {
    ModulePorts ports{settings, {}, {}};
    for (int i = 0; i < module.GetNoInput(); ++i) {
        ports.inputs.push_back(port(module.GetInputName(i), module.GetPortType(inputPort, i)));
    }
    for (int i = 0; i < module.GetNoOutput(); ++i) {
        ports.outputs.push_back(port(module.GetOutputName(i), module.GetPortType(outputPort, i)));
    }
    return ports;
}

std::vector<ModulePorts> portsOf(B_BasisModule& module) {
    if (!isFendra(module)) {
        return {currentPorts(module, "")};
    }
    std::vector<ModulePorts> all;
    for (const Setting::Word& direction : Setting::named("direction").words) {
        FendraSettings settings;
        settings.direction = direction.held;
        applySettings(settings, module);
        all.push_back(currentPorts(module, direction.word));
    }
    return all;
}

std::string reportOf(B_BasisModule& module) {
    std::stringstream bytes;
    CArchive archive(bytes, CArchive::store);
    module.WriteReport(archive);
    std::string text = toUtf8(CString(bytes.str().c_str()));
    std::erase(text, '\r');
    return text;
}
