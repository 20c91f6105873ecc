#pragma once

// Bytes of memory that an array can have without displacing other programs. Where the system does
// not say, the most that an array can ever have.
double freeMemory();
