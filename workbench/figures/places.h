#pragma once

#include "workbench/figures/Figure.h"

#include <cstddef>

// Where the samples of a graph stand.

// Of sample i.
double placeOf(const Graph& graph, std::size_t i);

// How many samples stand before x. Takes some twenty steps at most, whatever the length.
std::size_t samplesBefore(const Graph& graph, double x);

// The sample that is nearest to x; the graph has one.
std::size_t nearestSample(const Graph& graph, double x);
