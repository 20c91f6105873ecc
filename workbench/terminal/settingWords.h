#pragma once

#include <string>
#include <vector>

// KEY=VALUE as --set takes it, from the table of settings.

// What is wrong with a word, and what to give; empty: nothing. What a number may be is left to the
// module's dialog.
std::string problemWithAssignment(const std::string& word);

// "direction=convolution|deconvolution, per=block|packet; with direction=convolution: ..."
std::string settingVocabulary();

// All that can be said whole, and "KEY=" where a number follows.
std::vector<std::string> settingCompletions();
