#pragma once

// What there is of fendra on this system. The rest is refused where it is asked for, and help,
// manual page and completion do not show it.
struct Offer {
    bool windows;       // windows and pictures
    bool parts;         // formats by the programs beside fendra
    bool cluster;       // batches on Slurm
    const char* shell;  // whose completion script is printed if none is named

    static const Offer here;
};
