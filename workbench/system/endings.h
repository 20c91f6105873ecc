#pragma once

// Calls a function, which has to be safe in a signal handler, before a signal from outside ends the
// process: an interrupt, a request to end, a closed terminal or pipe. Signals that are ignored stay
// so. Writing beyond the limit on the size of a file becomes an error of that write.
void catchEndings(void (*cleanUp)());

// From now on the first interrupt from the terminal, unless it is ignored, is only noted; the next
// one ends the process as before. After catchEndings.
void noteFirstInterrupt();
bool interrupted();
