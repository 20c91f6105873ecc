#pragma once

#include "benchmarks/quality/Figures.h"
#include "benchmarks/quality/Laboratory.h"

#include <string>
#include <vector>

// What is measured, by the name that ./bench quality takes.
struct Section {
    std::string name;
    void (*measure)(Laboratory& laboratory, Figures& figures);
};

// Error of the answer over that of the best one of the same method.
void measureStrength(Laboratory& laboratory, Figures& figures);
// Error of --auto over that of the best answer of any method.
void measureAutomatic(Laboratory& laboratory, Figures& figures);
// Where results stand, and what comes back.
void measurePlaces(Laboratory& laboratory, Figures& figures);
// Cuts of a recording.
void measureEnds(Laboratory& laboratory, Figures& figures);
// How often the band holds what it should.
void measureCoverage(Laboratory& laboratory, Figures& figures);
// A sweep in a street.
void measureSweep(Laboratory& laboratory, Figures& figures);
// How long a choice takes.
void measureTime(Laboratory& laboratory, Figures& figures);
// What was predicted, and the closed form. Last, since it looks back at the runs of all others.
void measurePredictions(Laboratory& laboratory, Figures& figures);
