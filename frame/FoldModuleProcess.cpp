#include "frame/Algorithm.h"
#include "frame/FoldModule.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <new>
#include <utility>
#include <vector>

static constexpr int done = 0;
static constexpr int failed = -1;
static constexpr int lengthsDiffer = -5;

static constexpr int lastBlock = 2;
static constexpr int innerBlock = 1;

int FoldModule::Process() {
    try {
        clearAllOutportStreams();
        return settings.executionMode == 1 ? processPacket() : processBlocks();
    } catch (const std::exception&) {  // memory exhausted
        return failed;
    }
}

int FoldModule::processPacket() {
    const int marker = typeInfo.Read(*inportStreams[0]);
    SampleArray first = takePacket(0);
    typeInfo.Read(*inportStreams[1]);
    SampleArray second = takePacket(1);
    Pass pass(std::move(first), std::move(second));
    return runPass(pass, marker);
}

// An execution mode other than 0, which only a file can hold, runs its passes on empty signals.
int FoldModule::processBlocks() {
    const int blockMarker = typeInfo.Read(*inportStreams[0]);
    typeInfo.Read(*inportStreams[1]);
    const int firstWaiting = typeInfo.GetFillSize(*inportStreams[0]);
    const int secondWaiting = typeInfo.GetFillSize(*inportStreams[1]);
    const int passCount = std::min(firstWaiting, secondWaiting);

    for (int index = 0; index < passCount; ++index) {
        SampleArray first, second;
        if (settings.executionMode == 0) {
            first = takeBlock(0);
            second = takeBlock(1);
        }
        Pass pass(std::move(first), std::move(second));
        const bool last = index == passCount - 1;
        const int code =
            runPass(pass, blockMarker == lastBlock && !last ? innerBlock : blockMarker);
        if (code != done) {
            return code;
        }
    }
    return done;
}

static int runAlgorithm(const FoldSettings& settings, Pass& pass) {
    const Algorithm* algorithm = selectAlgorithm(settings);
    if (algorithm == nullptr) {
        return failed;
    }
    if (algorithm->equalLengths && pass.first.length != pass.second.length) {
        return lengthsDiffer;
    }
    const int outcome = algorithm->run(settings, pass);
    return algorithm->resultCounts && outcome <= 0 ? failed : done;
}

int FoldModule::runPass(Pass& pass, int marker) {
    const int code = runAlgorithm(settings, pass);
    if (code != done) {
        return code;
    }
    writeArrayToOutport(0, pass.result.samples.get(), pass.result.length, marker, true, nullptr,
                        nullptr);
    if (settings.givesScalars()) {
        scalarStep = 1.0;
        writeScalar(1, pass.extraValues[0], marker);
        writeScalar(2, pass.extraValues[1], marker);
    }
    return done;
}

void FoldModule::writeScalar(int port, double value, int marker) {
    writeScalarToOutport(port, value, marker, true, GetOutputName(port), nullptr);
}

SampleArray FoldModule::takeBlock(int port) {
    double* samples = nullptr;
    int length = 0;
    newAndReadArrayFromInport(port, samples, length, true);
    return {std::unique_ptr<double[]>(samples), length};
}

// Each block is freed as soon as it is copied. A packet whose length goes beyond 32 bits does not
// fit in memory.
SampleArray FoldModule::takePacket(int port) {
    const int waiting = typeInfo.GetFillSize(*inportStreams[port]);
    std::vector<SampleArray> blocks(static_cast<std::size_t>(waiting));
    std::int64_t total = 0;
    for (SampleArray& block : blocks) {
        block = takeBlock(port);
        total += block.length;
    }
    if (total > std::numeric_limits<int>::max()) {
        throw std::bad_alloc();
    }

    SampleArray packet = {std::make_unique_for_overwrite<double[]>(static_cast<std::size_t>(total)),
                          static_cast<int>(total)};
    double* end = packet.samples.get();
    for (SampleArray& block : blocks) {
        end = std::copy_n(block.samples.get(), block.length, end);
        block.samples.reset();
    }
    return packet;
}
