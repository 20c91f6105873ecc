#pragma once

#include <cstdio>
#include <string>

// Looks at the header of an EDF or BDF file, plain or plus: the library refuses most faults without
// saying which, counts record lengths in 32 bits, and misreads durations with an exponent.
// Failure if the header is not that of a continuous recording that is all in the file, or of one
// that the library does not read. The file may be left anywhere; name is for messages.
// B. Kemp, A. Varri, A. C. Rosa, K. D. Nielsen, J. Gade, "A simple format for exchange of digitized
// polygraphic recordings", Electroenceph. Clin. Neurophysiol. 82 (1992) 391-393; B. Kemp,
// J. Olivan, "European data format 'plus' (EDF+)", Clin. Neurophysiol. 114 (2003) 1755-1761.
void checkEdfHeader(std::FILE* file, const std::string& name);
