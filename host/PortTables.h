#pragma once

#include "host/BlockStream.h"
#include "host/PortList.h"
#include "platform/CStringArray.h"

#include <istream>
#include <vector>

// What a module has by port. Token i of a port's type list and token i of its domain list are one
// kind of signal that the port takes or gives, for instance "DOUBLE[]" in "TIME_DOMAIN".
struct PortTables {
    int inputCount = 0;
    int outputCount = 0;

    // Filled by initToken, for as many ports as InitInputAndOutput found counted.
    PortList<CStringArray> inportTypeTokens;
    PortList<CStringArray> inportDomainTokens;
    PortList<CStringArray> outportTypeTokens;
    PortList<CStringArray> outportDomainTokens;

    // "TYPE DOMAIN" for each kind; made from the tokens by ComputeValidationData.
    PortList<CStringArray> inportKinds;
    PortList<CStringArray> outportKinds;

    // Sized by initStreams. No pointer is null: an input without a stream has one that is empty.
    PortList<std::istream*> inportStreams;
    PortList<std::vector<BlockStream*>> outportStreams;
};
