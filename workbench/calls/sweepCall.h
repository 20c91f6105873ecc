#pragma once

#include "workbench/calls/CallOptions.h"
#include "workbench/signals/Signal.h"

// The sweep that the command sweep makes of these options, with its rate. WrongOption;
// std::bad_alloc.
Signal sweepOf(const CallOptions& options);
