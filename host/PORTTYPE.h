#pragma once

// Which side of a module a port is on.
enum PORTTYPE { noPort = 0, inputPort = 1, outputPort = 2 };
