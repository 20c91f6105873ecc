#include "workbench/jobs/jobSize.h"

#include "workbench/methods/Method.h"
#include "workbench/system/systemMemory.h"

#include <gtest/gtest.h>

// A second each, without memory unless it is said.
TEST(JobSize, TakesNoMoreThreadsThanThereArePartsAndRoomForThem) {
    const Method& method = *Method::of(FendraSettings::convolution).front();
    const double most = freeMemory() / sizeof(double);
    const JobSize second{.seconds = 1.0}, nothing;
    EXPECT_EQ(threadsFor(8, method, {second, 100, 1000, 1.0}), 8);
    EXPECT_EQ(threadsFor(8, method, {second, 3, 1000, 1.0}), 3);
    EXPECT_EQ(threadsFor(8, method, {second, 100, 1000, most / 2.5}), 2);
    EXPECT_EQ(threadsFor(8, method, {second, 100, 1000, 10.0 * most}), 1);
    EXPECT_EQ(threadsFor(8, method, {nothing, 100, 1000, 1.0}), 1);
    EXPECT_EQ(threadsFor(8, method, {nothing, 100, 100000, 1.0}), 8);
}

TEST(JobSize, TakesPartsInTurnWhereThereAreMoreThanThreads) {
    EXPECT_EQ(partsInTurn(1, 8), 1.0);
    EXPECT_EQ(partsInTurn(3, 2), 2.0);
    EXPECT_EQ(partsInTurn(4, 2), 2.0);
}
