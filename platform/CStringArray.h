#pragma once

#include "platform/CArray.h"
#include "platform/CString.h"

using CStringArray = CArray<CString>;
