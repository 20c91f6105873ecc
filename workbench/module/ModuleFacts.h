#pragma once

#include <string>
#include <vector>

class B_BasisModule;

// The ports of a module under some of its settings, as its host shows them.
struct ModulePorts {
    std::string settings;                      // "convolution"; empty: as the module is made
    std::vector<std::string> inputs, outputs;  // "Signal 1 (DOUBLE[] TIME_DOMAIN)", in UTF-8
};

// Fendra's ports follow its settings: those of convolution and of deconvolution. Those of another
// module, whose settings nobody here knows, are given as they are.
std::vector<ModulePorts> portsOf(B_BasisModule& module);

// The module's own report on its settings, in UTF-8, with lines ended by line feeds.
std::string reportOf(B_BasisModule& module);
