#pragma once

#include "workbench/analysis/AnswerChoice.h"
#include "workbench/analysis/NoiseModel.h"
#include "workbench/analysis/PowerSpectra.h"
#include "workbench/treatment/Choice.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// One choice under way. Samples are scaled as for the module.
class Choosing {
public:
    Choosing(const Question& asked, const FendraSettings& given, const LeftToData& leftToData,
             const Treatment& wanted);

    Choice choose();

private:
    void chooseMethod();
    void chooseEnds();
    void chooseOversampling();
    [[nodiscard]] PowerSpectra spectraOf(const PreparationPlan& plan) const;
    [[nodiscard]] PowerSpectra searchedSpectra(const PowerSpectra& prepared) const;
    void judge();
    void judgeIteration(const PowerSpectra& spectra);
    void judgeDivision(const PowerSpectra& spectra);
    void judgeExact(const PowerSpectra& spectra);
    void keep(const AnswerChoice& answer);
    void weigh(const AnswerChoice& answer);
    void refuseUnexplained(const AnswerChoice& answer) const;
    void setNoise(const AnswerChoice* answer);
    void settle();
    [[nodiscard]] double sigmaOfSignal() const;
    [[nodiscard]] double rootMeanSquare() const;
    [[nodiscard]] std::optional<NoiseModel> knownNoise(std::size_t length) const;
    [[nodiscard]] bool choosesStrength() const;
    [[nodiscard]] std::string criterionText() const;

    const Question& question;
    LeftToData left;
    int exponent;  // of the power of two that the signal is divided by
    std::vector<double> signal, kernel;
    std::optional<PowerSpectra> plain;  // of the signals as they are; made where it is needed
    Choice choice;
    ChoiceRecord record;
};
