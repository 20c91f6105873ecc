#pragma once

#include "platform/CByteArray.h"

// What a change of settings tells the host about the ports.
struct RET_PORT {
    int flag = 0;      // 1: the ports listed are to be rebuilt
    CByteArray ports;  // port numbers
};
