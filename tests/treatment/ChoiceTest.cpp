#include "workbench/treatment/Choice.h"

#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <utility>

static Question triangles() {
    Question question;
    for (int i = 0; i < 32; ++i) {
        question.signal.push_back(i < 16 ? i : 32 - i);
    }
    question.kernel = question.signal;
    return question;
}

// An error that the curve does not give means that the choice was made for another iteration.
TEST(Choice, IsContradictedByAnErrorThatWasNotPredicted) {
    FendraSettings settings;
    settings.direction = FendraSettings::deconvolution;
    settings.method = FendraSettings::vanCittert;
    const Choice choice =
        chooseFor(triangles(), settings, {.convergence = true, .maxIterations = true}, {});
    const auto steps = static_cast<double>(choice.record->steps.value());
    const double predicted = choice.record->predictedError.value();
    EXPECT_FALSE(choice.contradictedBy(predicted, steps + 1.0));
    EXPECT_FALSE(choice.contradictedBy(predicted * (1.0 + 5e-7), steps + 1.0));
    for (const auto& [error, loops] :
         {std::pair{predicted * (1.0 + 2e-6), steps + 1.0}, {predicted, steps}}) {
        EXPECT_TRUE(choice.contradictedBy(error, loops).value().starts_with("internal error: "));
    }
}

TEST(Choice, IsRefusedWhereNoMethodHasWhatIsLeft) {
    FendraSettings settings;
    settings.direction = FendraSettings::deconvolution;
    settings.method = FendraSettings::frequencyDomain;
    EXPECT_THROW(chooseFor(triangles(), settings, {.maxIterations = true}, {}), Failure);
    Treatment band;
    band.frequencies = Span{0.1, 0.2};
    settings.method = FendraSettings::regularized;
    EXPECT_THROW(chooseFor(triangles(), settings, {}, band), Failure);  // no rate
}
