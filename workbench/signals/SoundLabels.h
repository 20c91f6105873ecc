#pragma once

#include <string>
#include <vector>

// What an audio file says of its sound beside the samples.
struct SoundLabels {
    struct Tag {
        std::string name;  // "title", "artist"
        std::string text;  // UTF-8, maybe of several lines
    };
    std::vector<Tag> tags;

    // Where the loudspeaker of each channel stands, "front left"; empty: not known.
    std::vector<std::string> speakers;
};
