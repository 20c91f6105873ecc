#include "host/TCError.h"
#include "tests/frame/ModuleRig.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/setVariable.h"

#include <gtest/gtest.h>

TEST(EntryPoints, NumberModulesAnewAndAnswerWhatAHostAsks) {
    const ModuleRig first;
    const int number = first.module.instanceNumber;
    EXPECT_EQ(ModuleRig().module.instanceNumber, number + 1);
    EXPECT_EQ(ModuleRig().module.instanceNumber, number + 2);
    DeleteModuleInstance(nullptr);
    EXPECT_EQ(InitDLL(), 1);
    EXPECT_EQ(IsDebug(), 0);
    EXPECT_STREQ(GetCID(), "");
}

TEST(EntryPoints, GetModuleInstanceIsNullWhereMemoryRunsOut) {
    sweepAllocations([](const FailingAllocator& memory) {
        memory.arm();
        B_BasisModule* module = GetModuleInstance();
        EXPECT_EQ(FailingAllocator::disarm(), module == nullptr);
        DeleteModuleInstance(module);
    });
}

// Inputs 0 to 2 and outputs 0 to 3: ~ marks a signal in time, # a scalar, ! a name that is reported
// as an error and empty.
static std::string portsOf(B_BasisModule& module, const CString& name, const CString& conflict) {
    std::string text;
    TCError::install([&](const TCError& error) {
        const bool right = error.source == name && error.text == conflict && error.code == 100;
        text += right ? "!" : "?";
    });
    for (int i = 0; i < 7; ++i) {
        const PORTTYPE side = i < 3 ? inputPort : outputPort;
        const int port = i < 3 ? i : i - 3;
        text += module.ValidatePortType(side, port, "DOUBLE[]", "TIME_DOMAIN") == 1 ? "~" : "";
        text += module.ValidatePortType(side, port, "DOUBLE", "SCALAR") == 1 ? "#" : "";
        text += i < 3 ? module.GetInputName(port) : module.GetOutputName(port);
        text += "|";
    }
    TCError::install({});
    return text;
}

static void expectPorts(const Settings& settings, char outputs, const std::string& german,
                        const std::string& english) {
    const ModuleRig rig(settings, outputs);
    const CString numbered = ("Fendra" + std::to_string(rig.module.instanceNumber)).c_str();
    setVariable("LC_ALL", "de_DE.UTF-8");
    EXPECT_EQ(portsOf(rig.module, numbered, "Versionskonflikt!"), german);
    setVariable("LC_ALL", "C");
    EXPECT_EQ(portsOf(rig.module, numbered, "version conflict!"), english);
    rig.module.instanceNumber = 0;
    EXPECT_EQ(portsOf(rig.module, "Fendra", "version conflict!"), english);
}

TEST(Ports, FollowDirectionMethodAndLanguage) {
    expectPorts({0, 0, 2}, 1, "~Signal 1|~Signal 2|!|~gefaltetes Signal|!|!|!|",
                "~signal 1|~signal 2|!|~convolved signal|!|!|!|");
    const std::string german = "~gefaltetes Signal|~Faltungskern|!|~entfaltetes Signal|";
    const std::string english = "~convolved signal|~convolution core|!|~deconvolved signal|";
    expectPorts({0, 1, 1}, 1, german + "!|!|!|", english + "!|!|!|");
    expectPorts({0, 1, 2}, 3, german + "#letzter Fehler|#Schleifenanzahl|!|",
                english + "#last error|#number of loop steps|!|");
    expectPorts({0, 1, 3}, 3, german + "#Abweichung der 0-Elemente|#Abweichung des 1-Elementes|!|",
                english + "#deviation of 0-elements|#deviation of the 1-element|!|");
    expectPorts({0, 2, 3}, 3, "~!|~!|!|~!|#!|#!|!|", "~!|~!|!|~!|#!|#!|!|");
}
