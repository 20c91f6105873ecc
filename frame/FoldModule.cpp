#include "frame/FoldModule.h"

#include "host/TCError.h"
#include "resources/resources.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <iterator>

static std::atomic<std::int32_t> instanceCount = 0;

FoldModule::FoldModule() {
    instanceNumber = ++instanceCount;
    moduleName = "Fendra";
    moduleVersion = "V1.91";
    reservedNumber = 0;
    iconId = static_cast<int>(iconModule);
    inputCount = 2;
    outputCount = 1;
    reservedFlag = true;
    InitInputAndOutput();
    FoldModule::initToken();
    ComputeValidationData();
}

int FoldModule::firstZeroQuery() {
    return 0;
}

void FoldModule::countPortUp(PORTTYPE side, int /*port*/) {
    if (side == inputPort) {
        ++inputCounter;
    } else if (side == outputPort) {
        ++outputCounter;
    }
}

void FoldModule::countPortDown(PORTTYPE side, int /*port*/) {
    if (side == inputPort) {
        --inputCounter;
    } else if (side == outputPort) {
        --outputCounter;
    }
}

int FoldModule::secondZeroQuery() {
    return 0;
}

void FoldModule::ignorePortEvent(std::uintptr_t /*first*/, std::uintptr_t /*second*/,
                                 std::uintptr_t /*third*/) {}

void FoldModule::initToken() {
    B_BasisModule::initToken();
    for (int port = 0; port < 2; ++port) {
        inportTypeTokens[port].Add("DOUBLE[]");
        inportDomainTokens[port].Add("TIME_DOMAIN");
    }
    outportTypeTokens[0].Add("DOUBLE[]");
    outportDomainTokens[0].Add("TIME_DOMAIN");
    if (settings.givesScalars()) {
        for (int port = 1; port <= 2; ++port) {
            outportTypeTokens[port].Add("DOUBLE");
            outportDomainTokens[port].Add("SCALAR");
        }
    }
}

static constexpr int anyMethod = -1;

struct PortName {
    PORTTYPE side;
    int port;
    int direction;
    int method;
    unsigned text;
};

static constexpr PortName portNames[] = {
    {inputPort, 0, 0, anyMethod, stringSignal1},
    {inputPort, 1, 0, anyMethod, stringSignal2},
    {inputPort, 0, 1, anyMethod, stringFoldedSignal},
    {inputPort, 1, 1, anyMethod, stringKernel},
    {outputPort, 0, 0, anyMethod, stringFoldedSignal},
    {outputPort, 0, 1, anyMethod, stringUnfoldedSignal},
    {outputPort, 1, 1, 2, stringLastError},
    {outputPort, 2, 1, 2, stringLoopCount},
    {outputPort, 1, 1, 3, stringZeroElementDeviation},
    {outputPort, 2, 1, 3, stringOneElementDeviation},
};

const char* FoldModule::getInportName(int port) {
    return loadPortName(inputPort, port);
}

const char* FoldModule::getOutportName(int port) {
    return loadPortName(outputPort, port);
}

const char* FoldModule::loadPortName(PORTTYPE side, int port) {
    const auto* const name =
        std::find_if(std::begin(portNames), std::end(portNames), [&](const PortName& row) {
            return row.side == side && row.port == port && row.direction == settings.direction &&
                   (row.method == anyMethod || row.method == settings.method);
        });
    if (name == std::end(portNames)) {
        return reportPortConflict();
    }
    const CString text = LoadStrResFromDll(name->text);
    std::snprintf(nameBuffer, sizeof nameBuffer, "%s", static_cast<const char*>(text));
    return nameBuffer;
}

const char* FoldModule::reportPortConflict() {
    const CString text = LoadStrResFromDll(stringPortConflict);
    const CString* source = &moduleName;
    if (instanceNumber != 0) {
        instanceName.Format("%s%d", static_cast<const char*>(moduleName), instanceNumber);
        source = &instanceName;
    }
    const TCError report(*source, text, 100);
    return "";
}

int FoldModule::thirdZeroQuery() {
    return 0;
}
