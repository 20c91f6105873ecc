#pragma once

// Bytes of memory that a program can have without pushing others out; infinite where the system
// does not tell.
double freeMemory();
