#pragma once

// Bytes of memory that an array can have without pushing other programs out. Where the system does
// not tell, all that an array can ever have.
double freeMemory();
