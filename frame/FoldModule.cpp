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
    // The version of the stored record, not that of the module, whose label says V2.00. Stored
    // graphs carry it and are refused under any other, so it changes only with the record.
    moduleVersion = "V1.91";
    reservedNumber = 0;
    iconId = static_cast<int>(iconModule);
    inputCount = 2;
    outputCount = 1;
    reservedFlag = true;  // of no meaning here; a host that looks at it finds this value
    InitInputAndOutput();
    FoldModule::initToken();  // named: within a constructor no override is called
    ComputeValidationData();
}

// The three zero queries have no known meaning. Each has its own slot among the virtual operations,
// where a host finds it, so they are not one.
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

namespace {

struct PortName {
    PORTTYPE side;
    int port;
    std::int32_t direction;
    std::int32_t method;
    unsigned text;
};

}  // namespace

using enum FoldSettings::Direction;
using enum FoldSettings::Method;

static constexpr PortName portNames[] = {
    {inputPort, 0, convolution, anyMethod, stringSignal1},
    {inputPort, 1, convolution, anyMethod, stringSignal2},
    {inputPort, 0, deconvolution, anyMethod, stringFoldedSignal},
    {inputPort, 1, deconvolution, anyMethod, stringKernel},
    {outputPort, 0, convolution, anyMethod, stringFoldedSignal},
    {outputPort, 0, deconvolution, anyMethod, stringUnfoldedSignal},
    {outputPort, 1, deconvolution, vanCittert, stringLastError},
    {outputPort, 2, deconvolution, vanCittert, stringLoopCount},
    {outputPort, 1, deconvolution, pseudoInverse, stringZeroElementDeviation},
    {outputPort, 2, deconvolution, pseudoInverse, stringOneElementDeviation},
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
    // Within the object: the name outlives the call, and the buffer is not the caller's to free.
    std::snprintf(nameBuffer, sizeof nameBuffer, "%s", static_cast<const char*>(text));
    return nameBuffer;
}

// The text speaks of versions, since only a file of another one could hold such settings. The
// source tells several modules of a graph apart by their numbers.
const char* FoldModule::reportPortConflict() {
    const CString text = LoadStrResFromDll(stringPortConflict);
    const CString* source = &moduleName;
    if (instanceNumber != 0) {
        instanceName.Format("%s%d", static_cast<const char*>(moduleName), instanceNumber);
        source = &instanceName;
    }
    constexpr int portConflict = 100;
    const TCError report(*source, text, portConflict);
    return "";
}

int FoldModule::thirdZeroQuery() {
    return 0;
}
