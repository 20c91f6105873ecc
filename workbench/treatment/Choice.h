#pragma once

#include "workbench/analysis/IterationCurve.h"
#include "workbench/analysis/NoiseModel.h"
#include "workbench/methods/FendraSettings.h"
#include "workbench/treatment/ChoiceRecord.h"
#include "workbench/treatment/Preparation.h"
#include "workbench/treatment/Treatment.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a deconvolution is chosen from: one channel of the signal, with the kernel that goes with
// it.
struct Question {
    std::vector<double> signal, kernel;
    std::string name;             // of the signal, for messages
    double rate = 0.0;            // Hz; 0: not known
    std::vector<double> quiet;    // samples of noise alone; empty: no such stretch is known
    std::int64_t kernelZero = 0;  // sample of the kernel at zero
};

// How a deconvolution is to be done, and what speaks against it.
struct Choice {
    FendraSettings settings;             // with what was found
    Treatment treatment;                 // likewise
    std::optional<ChoiceRecord> record;  // none: nothing was chosen, and nothing has to be known
    std::optional<double> noise;         // of the band that was asked for
    std::vector<std::string> warnings;
    std::optional<IterationCurve> curve;  // of the iteration, to predict its last error by

    // Why what the module reports of the iteration on the prepared signal is not what was
    // predicted, so that the choice was made for another iteration; none if it is, or was not
    // predicted.
    [[nodiscard]] std::optional<std::string> contradictedBy(double lastError,
                                                            double loopCount) const;
};

// Whether that is so, and the signal has to be looked at for it, or for its record.
bool isChosen(const FendraSettings& given, const LeftToData& left, const Treatment& wanted);

// Chooses what is left to the data, in this order:
//     the method           by the advice of MethodAdvice
//     the ends             where first and last sample differ by more than five times the noise,
//                          and meet more roughly than others, odd for a kernel that is smooth, else
//                          zeros
//     the oversampling     4 where the lag would make the iteration diverge, else 1
//     the convergence      1 / max |H|^2
//     the strength         steps or strength at which the criterion of AnswerCurve is smallest
// and judges what was given. Ends and method are left to the data by an automatic treatment alone.
// Failure if what is left plays no part, or the answer explains less than 5 % of the signal.
Choice chooseFor(const Question& question, const FendraSettings& given, const LeftToData& left,
                 const Treatment& wanted);
