#pragma once

// Whether the environment names a display to open windows on, or a platform of Qt's own. Without
// one Qt would end the process, so this is asked before the window's library is.
bool displayAvailable();
