#pragma once

#include "workbench/signals/SoundLabels.h"

#include <sndfile.h>

#include <string>
#include <vector>

// The labels that libsndfile finds in an audio file, except the name of the program that wrote it,
// which does not hold for a result. Loudspeakers are known where every channel has one.
SoundLabels readLabels(SNDFILE* sound, int channels);

// Gives labels to a file that is being written, before its first sample. What it has no place for
// is left out.
void writeLabels(SNDFILE* sound, const SoundLabels& labels);

// The same for the loudspeakers alone; false if the file has no place for them.
bool writeSpeakers(SNDFILE* sound, const std::vector<std::string>& speakers);
