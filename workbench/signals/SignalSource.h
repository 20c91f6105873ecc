#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/signals/SourceName.h"

#include <functional>
#include <memory>

// Where a signal comes from: it can be opened, and read from its first sample. A source may be
// opened from several threads.
struct SignalSource {
    SourceName name;
    std::function<std::unique_ptr<SignalReader>()> open;  // Failure as the reader's
    // The same, but it may return before the end of a pipe is known; empty where there is none.
    std::function<std::unique_ptr<SignalReader>()> openStream = nullptr;
    std::string sha256 = {};  // of its bytes, where it is known before
};
