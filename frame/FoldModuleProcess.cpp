#include "frame/Algorithm.h"
#include "frame/FoldModule.h"
#include "host/ProcessCode.h"
#include "host/RunObserver.h"
#include "platform/ArithmeticMode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

int FoldModule::Process() {
    const StandardArithmetic resultsDoNotDependOnTheHost;
    try {
        clearAllOutportStreams();
        return settings.executionMode == FoldSettings::perPacket ? processPacket()
                                                                 : processBlocks();
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {  // of a container: more than any memory
    }
    RunObserver::reportFailure(RunFailure::memoryExhausted);
    return ProcessCode::failed;
}

int FoldModule::processPacket() {
    const int marker = typeInfo.Read(*inportStreams[0]);
    Pass pass = takePass(&FoldModule::takePacket, 0, 0);
    return runPass(pass, marker);
}

// An execution mode beyond the two, which only a file can hold, runs its passes on empty signals.
int FoldModule::processBlocks() {
    // That of the first block holds for the whole call, whatever the later ones carry.
    const int blockMarker = typeInfo.Read(*inportStreams[0]);
    typeInfo.Read(*inportStreams[1]);
    const int firstWaiting = typeInfo.GetFillSize(*inportStreams[0]);
    const int secondWaiting = typeInfo.GetFillSize(*inportStreams[1]);
    const int passCount = std::min(firstWaiting, secondWaiting);
    KeptPlan plan;

    for (int index = 0; index < passCount; ++index) {
        Pass pass = settings.executionMode == FoldSettings::perBlock
                        ? takePass(&FoldModule::takeBlock, firstWaiting - 1 - index,
                                   secondWaiting - 1 - index)
                        : Pass({}, {});
        pass.plan = &plan;
        const bool last = index == passCount - 1;
        const int code =
            runPass(pass, blockMarker == BlockHeader::last && !last ? BlockHeader::moreFollow
                                                                    : blockMarker);
        if (code != ProcessCode::done) {
            return code;
        }
    }
    return ProcessCode::done;
}

Pass FoldModule::takePass(SampleArray (FoldModule::*take)(int port), int firstLeft,
                          int secondLeft) {
    try {
        SampleArray first = (this->*take)(0);
        SampleArray second = (this->*take)(1);
        return {std::move(first), std::move(second)};
    } catch (...) {
        discardFromInport(0, firstLeft);
        discardFromInport(1, secondLeft);
        throw;
    }
}

static int runAlgorithm(const FoldSettings& settings, Pass& pass) {
    const Algorithm* const algorithm = selectAlgorithm(settings);
    if (algorithm == nullptr) {
        RunObserver::reportFailure(RunFailure::refused);
        return ProcessCode::failed;
    }
    if (algorithm->equalLengths && pass.first.length != pass.second.length) {
        RunObserver::reportFailure(RunFailure::refused);
        return ProcessCode::lengthsDiffer;
    }
    if (algorithm->run(settings, pass) > 0) {
        return ProcessCode::done;
    }
    if (pass.stopped) {
        RunObserver::reportFailure(RunFailure::stopped);
        return ProcessCode::failed;
    }
    RunObserver::reportFailure(algorithm->refuses(settings, pass) ? RunFailure::refused
                                                                  : RunFailure::memoryExhausted);
    return algorithm->resultCounts ? ProcessCode::failed : ProcessCode::done;
}

int FoldModule::runPass(Pass& pass, int marker) {
    const int code = runAlgorithm(settings, pass);
    if (code != ProcessCode::done) {
        return code;
    }
    if (settings.givesScalars()) {
        writeWithScalars(pass, marker);
    } else {
        writeArrayToOutport(0, pass.result.samples.get(), pass.result.length, marker, true, nullptr,
                            nullptr);
    }
    return ProcessCode::done;
}

// What asks for memory comes first, so that all three outputs are written or none.
void FoldModule::writeWithScalars(const Pass& pass, int marker) {
    // Copies: each call for a name overwrites the name before.
    const CString firstName = GetOutputName(1), secondName = GetOutputName(2);
    reserveOnOutport(0, pass.result.length);
    reserveOnOutport(1, 1);
    reserveOnOutport(2, 1);

    scalarStep = 1.0;
    writeArrayToOutport(0, pass.result.samples.get(), pass.result.length, marker, true, nullptr,
                        nullptr);
    writeScalarToOutport(1, pass.extraValues[0], marker, true, firstName, nullptr);
    writeScalarToOutport(2, pass.extraValues[1], marker, true, secondName, nullptr);
}

SampleArray FoldModule::takeBlock(int port) {
    double* samples = nullptr;
    int length = 0;
    newAndReadArrayFromInport(port, samples, length, true);
    return {std::unique_ptr<double[]>(samples), length};
}

// Each block is freed as soon as it is copied: the peak is twice the packet. One whose length goes
// beyond 32 bits counts as one that does not fit in memory.
SampleArray FoldModule::takePacket(int port) {
    typeInfo.Read(*inportStreams[port]);
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
