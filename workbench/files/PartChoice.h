#pragma once

#include "workbench/signals/FilePart.h"
#include "workbench/signals/SourceName.h"

#include <string>
#include <vector>

// The part that is meant: the one of that name, where a slash at its beginning may be left out, or
// without a name the only signal. Failure if there is none, if it is no signal, or if several could
// be meant: these are listed.
const FilePart& chosenPart(const std::vector<FilePart>& parts, const std::string& name,
                           const SourceName& file);
