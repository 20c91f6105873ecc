#include "host/B_BasisModule.h"

#include "tests/support/Archives.h"
#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <vector>

namespace {

// A module with one setting: with extended not 0 it has two more outputs.
struct Node final : B_BasisModule {
    Node() {
        moduleVersion = "V7";
        inputCount = 2;
        outputCount = 1;
        rebuildPorts();
    }
    void rebuildPorts() {
        InitInputAndOutput();
        initToken();
        ComputeValidationData();
    }
    void initToken() override {
        B_BasisModule::initToken();
        for (int port = 0; port < (extended != 0 ? 3 : 1); ++port) {
            outportTypeTokens[port].Add(port == 0 ? "DOUBLE[]" : "DOUBLE");
            outportDomainTokens[port].Add(port == 0 ? "TIME_DOMAIN" : "SCALAR");
        }
    }
    void loadSettings(CArchive& archive, CString version) override {
        EXPECT_EQ(version, "V7");
        archive >> extended;
        rebuildPorts();
    }

    using B_BasisModule::clearAllOutportStreams;
    using B_BasisModule::newAndReadArrayFromInport;
    using B_BasisModule::writeArrayToOutport;
    using B_BasisModule::writeScalarToOutport;

    std::int32_t extended = 0;
};

}  // namespace

static std::string archiveOf(int outputs, int extended) {
    std::ostringstream stream;
    CArchive(stream, CArchive::store) << CString("V7") << outputs << extended;
    return stream.str();
}

TEST(BasisModule, KeepsItsPortsWhenALoadFails) {
    const std::string whole = archiveOf(3, 1);
    std::vector<std::string> cases = {archiveOf(2, 1), archiveOf(1, 1)};
    for (const int outputs : {INT_MIN, -1, 0, 3, 255, 256, 257, INT_MAX}) {
        cases.push_back(archiveOf(outputs, 0));
    }
    for (std::size_t length = 0; length < whole.size(); ++length) {
        cases.push_back(whole.substr(0, length));
    }
    for (const std::string& bytes : cases) {
        Node node;
        BlockStream last;
        load(node, whole);
        node.AddOutputStream(2, &last);
        EXPECT_EQ(load(node, bytes), bytes.size() < whole.size() ? CArchiveException::endOfFile
                                                                 : CArchiveException::badIndex);
        node.writeScalarToOutport(2, 1.0, 0, true, nullptr, nullptr);
        EXPECT_TRUE(last.waitingBlocks() == 1 && node.GetNoOutput() == 3 &&
                    node.GetPortType(outputPort, 2) == "DOUBLE SCALAR");
    }
}

static const std::vector<double> samples = {1.0, 2.0, 3.0};

// The next block of an input, empty if none waits.
static std::vector<double> take(Node& node, int port) {
    double* array = nullptr;
    int count = -1;
    node.newAndReadArrayFromInport(port, array, count, true);
    const std::unique_ptr<double[]> owner(array);
    return {array, array + count};
}

static int put(Node& node, int port, int count) {
    return node.writeArrayToOutport(port, samples.data(), count, 1, true, nullptr, nullptr);
}

TEST(BasisModule, WritesToAllStreamsOfAnOutputUntilTheyAreDeleted) {
    Node node;
    BlockStream left, right;
    node.AddOutputStream(0, &left);
    node.AddOutputStream(0, &right);
    EXPECT_EQ(put(node, 0, 3) + put(node, 0, -1), 1);
    node.clearAllOutportStreams();
    load(node, archiveOf(3, 1));  // leaves output 0 connected
    put(node, 0, 3);
    node.writeScalarToOutport(0, 4.5, 2, true, "name", nullptr);
    node.DeleteStreams();
    put(node, 0, 3);
    for (BlockStream* stream : {&left, &right}) {
        node.SetInputStream(0, stream);
        const std::vector<std::vector<double>> blocks = {take(node, 0), take(node, 0),
                                                         take(node, 0)};
        EXPECT_EQ(blocks, (std::vector<std::vector<double>>{samples, {4.5}, {}}));
    }
}

TEST(BasisModule, PassesOverPortsThatAreNotThere) {
    Node node;
    BlockStream stream;
    stream.writeBlock(1, samples.data(), 3);
    for (const int port : {-1, 3, INT_MAX}) {
        node.SetInputStream(port, &stream);
        node.AddOutputStream(port, &stream);
        EXPECT_TRUE(take(node, port).empty() && put(node, port, 3) == 0);
    }
    node.SetInputStream(0, nullptr);  // no stream reads as empty
    EXPECT_EQ(node.typeInfo.Read(*node.inportStreams[0]), 0);
}

// Whichever allocation fails: nothing is taken, nothing written, no port changed.
TEST(BasisModule, LeavesBlocksAndPortsWhereTheyAreWhenMemoryIsExhausted) {
    const std::vector<double> signal(40000, 1.5);
    const std::string bytes = archiveOf(3, 1);
    sweepAllocations([&](const FailingAllocator& memory) {
        Node node;
        BlockStream input, left, right;
        input.writeBlock(1, signal.data(), 40000);
        node.SetInputStream(0, &input);
        node.AddOutputStream(0, &left);
        node.AddOutputStream(0, &right);
        double* array = nullptr;
        int count = 0;
        memory.arm();
        try {
            node.newAndReadArrayFromInport(0, array, count, true);
            node.writeArrayToOutport(0, array, count, 1, true, nullptr, nullptr);
            load(node, bytes);
        } catch (const std::bad_alloc&) {
        }
        const bool failed = FailingAllocator::disarm();
        const std::unique_ptr<double[]> owner(array);
        EXPECT_TRUE(node.GetNoOutput() == (failed ? 1 : 3) &&
                    node.GetPortType(outputPort, 2) == (failed ? "" : "DOUBLE SCALAR"));
        EXPECT_EQ(input.waitingBlocks(), array != nullptr ? 0 : 1);
        EXPECT_EQ(left.waitingBlocks(), right.waitingBlocks());
    });
}
