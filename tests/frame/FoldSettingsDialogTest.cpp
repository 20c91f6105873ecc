#include "frame/FoldSettings.h"
#include "host/LaunchHelp.h"
#include "tests/frame/ModuleRig.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/Person.h"
#include "tests/support/setVariable.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

// The settings as text: executionMode, direction, method; maxIterations, convergence, abortAtError,
// errorValue, abortAtMinError; scaling.
static std::string toText(B_BasisModule& module) {
    std::istringstream stream(stored(module));
    CArchive archive(stream, CArchive::load);
    CString version;
    int outputs = 0;
    FoldSettings s;
    archive >> version >> outputs >> s.executionMode >> s.method >> s.direction >> s.convergence >>
        s.maxIterations >> s.abortAtError >> s.errorValue >> s.abortAtMinError >> s.scaling;
    std::ostringstream text;
    text << s.executionMode << ' ' << s.direction << ' ' << s.method << "  " << s.maxIterations
         << ' ' << s.convergence << ' ' << s.abortAtError << ' ' << s.errorValue << ' '
         << s.abortAtMinError << "  " << s.scaling;
    return text.str();
}

// The other way round.
static void setUp(B_BasisModule& module, const std::string& text) {
    FoldSettings s;
    std::istringstream(text) >> s.executionMode >> s.direction >> s.method >> s.maxIterations >>
        s.convergence >> s.abortAtError >> s.errorValue >> s.abortAtMinError >> s.scaling;
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    archive << s.executionMode << s.method << s.direction << s.convergence << s.maxIterations
            << s.abortAtError << s.errorValue << s.abortAtMinError << s.scaling;
    const bool scalars = s.direction != 0 && (s.method == 2 || s.method == 3);
    ASSERT_EQ(load(module, graph("V1.91", scalars ? 3 : 1, stream.str())), CArchiveException::none);
}

// The controls as they stand: o enabled, * and checked, . disabled, x and checked. Execution,
// direction, method, parameters of the iteration in tab order, scaling, buttons.
static std::string statesOf(const CDialog& dialog) {
    std::string text;
    for (const int id : {1040, 1041, 0,    1025, 1026, 0, 1023, 1024, 1027, 1028, 0,
                         1030, 1031, 1032, 1034, 1033, 0, 1036, 0,    1,    2,    1002}) {
        const DialogControl* const control = dialog.control(static_cast<unsigned>(id));
        text += control == nullptr
                    ? ' '
                    : ".xo*"[(control->enabled ? 2 : 0) + (control->checked ? 1 : 0)];
    }
    return text;
}

namespace {

struct States {
    const char* start;
    const char* script;
    const char* expected;
    const char* refused = "";
};

class SettingsDialogStates : public testing::TestWithParam<States> {};

}  // namespace

TEST_P(SettingsDialogStates, AreThoseOfDirectionAndMethod) {
    const auto& [start, script, expected, refused] = GetParam();
    const ModuleRig rig;
    setUp(rig.module, start);
    Person person(script);
    std::string states;
    person.look = [&](const CDialog& dialog) { states = statesOf(dialog); };
    RET_PORT changed;
    EXPECT_EQ(rig.module.OnLeftDblClk(changed), noPort);
    EXPECT_EQ(states, expected);
    EXPECT_EQ(person.refused, refused);
    EXPECT_EQ(toText(rig.module), start);
}

static constexpr const char* convolution = "*o *o o*.. ....x . ooo";
static constexpr const char* spectral = "*o o* .*oo ....x . ooo";
static constexpr const char* iteration = "*o o* .o*o ooo.* . ooo";
static constexpr const char* filter = "*o o* .oo* ....x o ooo";

INSTANTIATE_TEST_SUITE_P(
    Start, SettingsDialogStates,
    testing::Values(States{"0 0 0  100 1 0 0.01 1  4", "", "*o *o *o.. ....x . ooo"},
                    States{"0 0 1  100 1 0 0.01 1  4", "", convolution},
                    States{"0 1 1  100 1 0 0.01 1  4", "", spectral},
                    States{"0 1 2  100 1 0 0.01 1  4", "", iteration},
                    States{"1 1 2  100 1 1 0.01 0  4", "", "o* o* .o*o oo*oo . ooo"},
                    States{"0 1 3  100 1 0 0.01 1  4", "", filter},
                    States{"0 1 3  100 1 1 0.01 1  4", "", "*o o* .oo* ..x.x o ooo"}));
INSTANTIATE_TEST_SUITE_P(
    OnWhatOnlyAFileHolds, SettingsDialogStates,
    testing::Values(States{"0 0 2  100 1 1 0.01 1  4", "", "*o *o o*.. ..x.x . ooo"},
                    States{"0 0 3  100 1 0 0.01 1  4", "", convolution},
                    States{"0 1 0  100 1 0 0.01 1  4", "", spectral},
                    States{"5 7 2  100 1 0 0.01 1  9", "", "oo oo .o*o ooo.* . ooo"},
                    States{"0 1 9  100 1 9 0.01 1  4", "", "*o o* .ooo ..x.x . ooo"},
                    States{"0 0 -1  100 1 0 0.01 1  4", "", "*o *o oo.. ....x . ooo"}));
INSTANTIATE_TEST_SUITE_P(
    AfterClicks, SettingsDialogStates,
    testing::Values(States{"0 0 0  100 1 0 0.01 1  4", "1026", spectral},
                    States{"0 0 1  100 1 0 0.01 1  4", "1023", "*o *o *o.. ....x . ooo"},
                    States{"0 0 0  100 1 0 0.01 1  4", "1024", convolution},
                    States{"0 0 1  100 1 0 0.01 1  4", "1041 1027 1028 1030=2 1036#0",
                           "o* *o o*.. ....x . ooo", "1027 1028 1030=2 1036#0 "},
                    States{"0 1 1  100 1 0 0.01 1  4", "1025", convolution},
                    States{"0 1 1  100 1 0 0.01 1  4", "1023 1034=1", spectral, "1023 1034=1 "},
                    States{"0 1 1  100 1 0 0.01 1  4", "1027", iteration},
                    States{"0 1 1  100 1 0 0.01 1  4", "1028", filter},
                    States{"0 1 2  100 1 1 0.01 1  4", "1025", "*o *o o*.. ..x.x . ooo"},
                    States{"0 1 2  100 1 0 0.01 1  4", "1025 1026", spectral},
                    States{"0 1 2  100 1 0 0.01 1  4", "1024", spectral},
                    States{"0 1 2  100 1 0 0.01 1  4", "1028", filter},
                    States{"0 1 2  100 1 0 0.01 1  4", "1032", "*o o* .o*o oo*o* . ooo"},
                    States{"0 1 2  100 1 1 0.01 1  4", "1032", iteration},
                    States{"0 1 3  100 1 0 0.01 1  4", "1025", convolution},
                    States{"0 1 3  100 1 0 0.01 1  4", "1024", spectral},
                    States{"0 1 3  100 1 1 0.01 1  4", "1027", "*o o* .o*o oo*o* . ooo"},
                    States{"0 1 3  100 1 0 0.01 1  4", "1036#5 1036#-1 1#0", filter,
                           "1036#5 1036#-1 1#0 "}));

static const std::string noWholeNumber = "Please enter a whole number from 0 to 4294967295.|";
static const std::string noNumber =
    "Please enter a number with a decimal point, such as 0.01 or 1e-6.|";
static const std::string outOfRange = "Please enter a number from 0 to 1e+308.|";

static const std::string vanCittertLabel =
    "\"Modified algorithm according to the van Cittert algorithm\"";

static std::string disabled(std::string message, const std::string& choices) {
    message.pop_back();
    return message + " The field is disabled; choose first: " + choices +
           ". Then you can change it.|";
}

static std::string sixTimes(const std::string& message) {
    const std::string thrice = message + message + message;
    return thrice + thrice;
}

namespace {

struct Outcome {
    const char* start;
    std::string script;
    const char* settings;
    const char* ports = "1:";  // outputs, and the ports that the host is told to rebuild
    std::string messages = {};
};

class SettingsDialogOutcome : public testing::TestWithParam<Outcome> {};

}  // namespace

// "3:12": the outputs, and the ports that the host is told to rebuild.
static std::string portsText(B_BasisModule& module, const RET_PORT& changed) {
    std::string told = std::to_string(module.GetNoOutput()) + ":";
    for (int i = 0; i < changed.ports.GetSize(); ++i) {
        told += std::to_string(changed.ports[i]);
    }
    return told;
}

TEST_P(SettingsDialogOutcome, ReachesTheModuleByOkAlone) {
    setVariable("LC_ALL", "C");
    const auto& [start, script, settings, ports, messages] = GetParam();
    const ModuleRig rig;
    setUp(rig.module, start);
    const Person person(script);
    RET_PORT changed;
    const PORTTYPE side = rig.module.OnLeftDblClk(changed);
    EXPECT_EQ(toText(rig.module), settings);
    EXPECT_EQ(portsText(rig.module, changed), ports);
    EXPECT_EQ(side, changed.ports.GetSize() == 0 ? noPort : outputPort);
    EXPECT_EQ(changed.flag, side == outputPort ? 1 : 0);
    EXPECT_EQ(rig.module.ValidatePortType(outputPort, 2, "DOUBLE", "SCALAR"), ports[0] == '3');
    EXPECT_EQ(person.messages, messages);
    const ModuleRig other;
    EXPECT_EQ(load(other.module, stored(rig.module)), CArchiveException::none);
}

// A load that breaks off within the record leaves settings that its ports do not fit.
TEST(SettingsDialog, FitsPortsToWhatABrokenLoadHasLeft) {
    for (const char method : {'\1', '\2'}) {
        const bool iterated = method == 1;
        const ModuleRig rig({.direction = 1, .method = static_cast<char>(iterated ? 2 : 1)},
                            iterated ? 3 : 1);
        const std::string settings = record({.direction = 1, .method = method});
        EXPECT_EQ(load(rig.module, graph("V1.91", 1, settings.substr(0, 12))),
                  CArchiveException::endOfFile);
        const Person person("1");
        RET_PORT changed;
        EXPECT_EQ(rig.module.OnLeftDblClk(changed), outputPort);
        const ModuleRig other;
        EXPECT_EQ(load(other.module, stored(rig.module)), CArchiveException::none);
    }
}

static constexpr const char* fresh = "0 0 1  100 1 0 0.01 1  4";
static constexpr const char* iterating = "0 1 2  100 1 0 0.01 1  4";

INSTANTIATE_TEST_SUITE_P(
    Ok, SettingsDialogOutcome,
    testing::Values(Outcome{fresh, "1", fresh},
                    Outcome{fresh, "1041 1023 1", "1 0 0  100 1 0 0.01 1  4"},
                    Outcome{fresh, "1026 1027 1030=-2.5 1031=4294967295 1032 1034=1e308 1033 1",
                            "0 1 2  4294967295 -2.5 1 1e+308 0  4", "3:12"},
                    Outcome{fresh, "1026 1028 1036#1 1", "0 1 3  100 1 0 0.01 1  1", "3:12"},
                    Outcome{"0 1 3  100 1 0 0.01 1  2", "1025 1", "0 0 1  100 1 0 0.01 1  2",
                            "1:12"},
                    Outcome{iterating, "1028 1", "0 1 3  100 1 0 0.01 1  4", "3:"},
                    Outcome{iterating, "1024 1", "0 1 1  100 1 0 0.01 1  4", "1:12"},
                    Outcome{"0 1 1  100 1 0 0.01 1  4", "1025 1", fresh},
                    // What does not apply stays, and is exchanged like the rest.
                    Outcome{iterating, "1032 1034=_.5_ 1031=+7 1031=007 1032 1028 1",
                            "0 1 3  7 1 0 0.5 1  4", "3:"}));
INSTANTIATE_TEST_SUITE_P(
    NotOk, SettingsDialogOutcome,
    testing::Values(
        Outcome{fresh, "1026 1027 1030=9 2", fresh}, Outcome{fresh, "1026 1041 Escape 1", fresh},
        Outcome{fresh, "1026", fresh},
        Outcome{iterating, "1032 1034=-1e-9 1 2", iterating, "3:", outOfRange},
        Outcome{iterating, "1032 1034=1.1e308 1 1034=nan 1 1034=1e999 1 1034=0 1 2",
                "0 1 2  100 1 1 0 1  4", "3:", outOfRange + noNumber + noNumber},
        Outcome{iterating, "1031= 1 1031=-1 1 1031=4294967296 1 1031=1.5 1 1031=+7 1 1031=1x 1",
                iterating, "3:", sixTimes(noWholeNumber)},
        Outcome{iterating, "1030= 1 1030=1,5 1 1030=0x1p3 1 1030=inf 1 1030=1_2 1 1030=1e 1",
                iterating, "3:", sixTimes(noNumber)},
        // The first in the order of exchange is reported, whether it is enabled or not.
        Outcome{iterating, "1032 1030=x 1031=x 1034=-1 1", iterating, "3:", noWholeNumber},
        Outcome{iterating, "1032 1030=x 1034=-1 1024 1", iterating,
                "3:", disabled(noNumber, vanCittertLabel)}));
INSTANTIATE_TEST_SUITE_P(
    WhatOnlyAFileHolds, SettingsDialogOutcome,
    testing::Values(
        Outcome{"0 0 2  100 1 5 0.01 7  4", "1", "0 0 1  100 1 1 0.01 1  4"},
        Outcome{"8 1 0  100 1 0 0.01 1  9", "1", "-1 1 1  100 1 0 0.01 1  -1"},
        Outcome{"0 7 3  100 1 0 0.01 1  4", "1026 1", "0 1 3  100 1 0 0.01 1  4", "3:12"},
        Outcome{"0 7 3  100 1 0 0.01 1  4", "1025 1", fresh, "1:12"},
        Outcome{"0 7 3  100 1 0 0.01 1  4", "1", "0 -1 3  100 1 0 0.01 1  4", "3:"},
        Outcome{"0 7 3  100 1 0 0.01 1  4", "1024 1", "0 -1 1  100 1 0 0.01 1  4", "1:12"},
        Outcome{"0 7 1  100 1 0 0.01 1  4", "1027 1", "0 -1 2  100 1 0 0.01 1  4", "3:12"},
        // What nobody can reach stops OK all the same. The message says how to get there.
        Outcome{"0 0 1  100 1 0 -1 1  4", "1 1026 1027 1032 1034=0 1025 1", "0 0 1  100 1 1 0 1  4",
                "1:",
                disabled(outOfRange,
                         "\"Deconvolution\", " + vanCittertLabel + ", \"Abort at error value\"")}));

TEST(SettingsDialog, HelpsAndStaysOpen) {
    std::string told;
    theApp.m_pszHelpFilePath = "fendra.hlp";
    installHelpLauncher([&](const CString& file, const CString& key) {
        told += std::string(file) + "#" + std::string(key) + " ";
    });
    const ModuleRig rig;
    rig.module.helpKey = "fold";
    const Person person("1002 1041 1002 1");
    RET_PORT changed;
    rig.module.OnLeftDblClk(changed);
    EXPECT_EQ(told, "fendra.hlp#fold fendra.hlp#fold ");
    EXPECT_EQ(toText(rig.module), "1 0 1  100 1 0 0.01 1  4");
    installHelpLauncher({});
    theApp.m_pszHelpFilePath = "";
}

// Whether memory ran out while a person chose the iteration.
static bool runsOut(const FailingAllocator& memory, B_BasisModule& module, RET_PORT& changed) {
    const Person person("1026 1027 1");
    memory.arm();
    try {
        module.OnLeftDblClk(changed);
    } catch (const std::bad_alloc&) {
        return FailingAllocator::disarm();
    }
    EXPECT_FALSE(FailingAllocator::disarm());
    return false;
}

TEST(SettingsDialog, LeavesAllAsItWasWhereMemoryRunsOut) {
    sweepAllocations([](const FailingAllocator& memory) {
        const ModuleRig rig;
        RET_PORT changed;
        const bool exhausted = runsOut(memory, rig.module, changed);
        const std::string scalar(rig.module.GetPortType(outputPort, 2));
        EXPECT_EQ(toText(rig.module) + scalar + std::to_string(changed.ports.GetSize()),
                  exhausted ? std::string(fresh) + "0" : iterating + "DOUBLE SCALAR2"s);
        EXPECT_EQ(rig.module.GetNoOutput(), exhausted ? 1 : 3);
    });
}
