#pragma once

#include "platform/CByteArray.h"

// What a change of settings means for the ports, for the host to act on.
struct RET_PORT {
    int flag = 0;      // 1: the ports listed are to be rebuilt
    CByteArray ports;  // port numbers
};
