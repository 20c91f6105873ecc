#pragma once

#include "workbench/figures/Figure.h"

// The figure with its own words, titles, axes and names of what was computed, in the person's
// language; names from files stay as they are.
Figure inPersonsLanguage(Figure figure);
