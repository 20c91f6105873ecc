#pragma once

#include "platform/CArray.h"

#include <cstdint>

using CByteArray = CArray<std::uint8_t>;
