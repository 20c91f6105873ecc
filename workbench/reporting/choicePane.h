#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/treatment/ChoiceRecord.h"

// The criterion by which a strength was searched, over all points of the search, with the one that
// was chosen marked. The record has a curve.
Pane choicePane(const ChoiceRecord& choice);
