#pragma once

#include <string>
#include <vector>

// " (did you mean NAME?)" with the candidate that a mistyped word is nearest to, by the number of
// letters to insert, delete, change or swap; empty if none is near.
std::string suggestion(const std::string& word, const std::vector<std::string>& candidates);
