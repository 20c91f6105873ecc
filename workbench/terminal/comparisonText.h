#pragma once

#include "workbench/jobs/CompareJob.h"

#include <string>
#include <vector>

// A comparison for people: a row for each method, and below, where sentences do not break the
// columns, what was chosen and what speaks against a result. withTruth: errors are known.
std::string comparisonTable(const std::vector<MethodOutcome>& outcomes, bool withTruth);

// The same for programs: a JSON array with an object for each method.
std::string comparisonJson(const std::vector<MethodOutcome>& outcomes);
