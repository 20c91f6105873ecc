#include "host/B_BasisModule.h"

#include "tests/support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace {

// A module with one setting: with extended not 0 it has two more outputs.
class Node final : public B_BasisModule {
public:
    Node() {
        moduleVersion = "V7";
        inputCount = 2;
        outputCount = 1;
        rebuildPorts();
    }

    using B_BasisModule::clearAllOutportStreams;
    using B_BasisModule::newAndReadArrayFromInport;
    using B_BasisModule::writeArrayToOutport;
    using B_BasisModule::writeScalarToOutport;

protected:
    void initToken() override {
        B_BasisModule::initToken();
        for (int port = 0; port < (extended != 0 ? 3 : 1); ++port) {
            outportTypeTokens[port].Add(port == 0 ? "DOUBLE[]" : "DOUBLE");
            outportDomainTokens[port].Add(port == 0 ? "TIME_DOMAIN" : "SCALAR");
        }
    }
    void storeSettings(CArchive& archive) override { archive << extended; }
    void loadSettings(CArchive& archive, CString version) override {
        if (version != moduleVersion) {
            AfxThrowArchiveException(CArchiveException::badSchema);
        }
        archive >> extended;
        rebuildPorts();
    }

private:
    void rebuildPorts() {
        InitInputAndOutput();
        initToken();
        ComputeValidationData();
    }

    std::int32_t extended = 0;
};

}  // namespace

static constexpr int minInt = std::numeric_limits<int>::min();
static constexpr int maxInt = std::numeric_limits<int>::max();

static std::string archiveOf(const CString& version, int outputs, int extended) {
    std::ostringstream stream;
    CArchive(stream, CArchive::store) << version << outputs << extended;
    return stream.str();
}

// The cause that the load ends with; none if it goes through.
static CArchiveException::Cause load(Node& node, const std::string& bytes) {
    std::istringstream stream(bytes);
    CArchive archive(stream, CArchive::load);
    try {
        node.Serialize(archive);
    } catch (const CArchiveException& error) {
        return error.cause;
    }
    return CArchiveException::none;
}

static std::string outputKinds(const Node& node) {
    std::string kinds;
    for (int port = -1; port <= node.GetNoOutput(); ++port) {
        kinds += std::string(node.GetPortType(outputPort, port)) + "|";
    }
    return kinds;
}

static const std::string plainKinds = "|DOUBLE[] TIME_DOMAIN||";
static const std::string extendedKinds = "|DOUBLE[] TIME_DOMAIN|DOUBLE SCALAR|DOUBLE SCALAR||";

TEST(BasisModule, StoresVersionCountAndSettings) {
    Node node;
    ASSERT_EQ(load(node, archiveOf("V7", 3, 1)), CArchiveException::none);
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    node.Serialize(archive);
    EXPECT_EQ(stream.str(), "\x02\0\0\0V7\x03\0\0\0\x01\0\0\0"s);
}

TEST(BasisModule, KnowsTheKindsOfSignalOfAPort) {
    Node node;
    node.outportTypeTokens[0].Add("INT[]");
    node.outportDomainTokens[0].Add("SPECTRUM");
    node.ComputeValidationData();
    EXPECT_EQ(outputKinds(node), "|DOUBLE[] TIME_DOMAIN, INT[] SPECTRUM||");
    EXPECT_EQ(node.ValidatePortType(outputPort, 0, "INT[]", "SPECTRUM"), 1);
    EXPECT_EQ(node.ValidatePortType(outputPort, 0, "INT[]", "TIME_DOMAIN"), 0);
}

TEST(BasisModule, KeepsItsPortsWhenALoadFails) {
    std::vector<std::pair<std::string, CArchiveException::Cause>> cases = {
        {archiveOf("V7", 2, 1), CArchiveException::badIndex},
        {archiveOf("V7", 1, 1), CArchiveException::badIndex},
        {archiveOf("v7", 1, 0), CArchiveException::badSchema},
        {archiveOf("V8", 3, 1), CArchiveException::badSchema}};
    for (const int outputs : {minInt, -1, 0, 3, 255, 256, 257, maxInt}) {
        cases.emplace_back(archiveOf("V7", outputs, 0), CArchiveException::badIndex);
    }
    for (std::size_t length = 0; length < 14; ++length) {
        cases.emplace_back(archiveOf("V7", 3, 1).substr(0, length), CArchiveException::endOfFile);
    }
    for (const auto& [bytes, cause] : cases) {
        Node node;
        BlockStream last;
        load(node, archiveOf("V7", 3, 1));
        node.AddOutputStream(2, &last);
        EXPECT_EQ(load(node, bytes), cause);
        node.writeScalarToOutport(2, 1.0, 0, true, nullptr, nullptr);
        EXPECT_EQ(outputKinds(node) + std::to_string(last.waitingBlocks()), extendedKinds + "1");
    }
}

TEST(BasisModule, SurvivesAnyArchive) {
    std::mt19937 random(1);
    Node node;
    int loaded = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string bytes = round % 2 == 0 ? archiveOf("V7", 1, 0) : archiveOf("V7", 3, 1);
        bytes[random() % bytes.size()] = static_cast<char>(random() % 4 == 0 ? random() : 1);
        loaded += load(node, bytes) == CArchiveException::none ? 1 : 0;
        const std::string kinds = outputKinds(node);
        ASSERT_TRUE(kinds == plainKinds || kinds == extendedKinds);
    }
    EXPECT_GT(loaded, 500);
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

TEST(BasisModule, PassesOverPortsThatAreNotThere) {
    Node node;
    BlockStream stream;
    stream.writeBlock(1, samples.data(), 3);
    for (const int port : {-1, 2, maxInt}) {
        node.SetInputStream(port, &stream);
        node.AddOutputStream(port, &stream);
        EXPECT_EQ(take(node, port).size() + static_cast<std::size_t>(put(node, port, 3)), 0U);
    }
    node.SetInputStream(1, nullptr);
    EXPECT_EQ(node.typeInfo.Read(*node.inportStreams[1]), 0);  // no stream reads as empty
    EXPECT_TRUE(take(node, 1).empty());
}

TEST(BasisModule, WritesToAllStreamsOfAnOutputUntilTheyAreDeleted) {
    Node node;
    BlockStream left, right;
    node.AddOutputStream(0, &left);
    node.AddOutputStream(0, &right);
    EXPECT_EQ(put(node, 0, 3) + put(node, 0, -1), 1);
    node.clearAllOutportStreams();
    load(node, archiveOf("V7", 3, 1));  // leaves output 0 connected
    put(node, 0, 3);
    node.writeScalarToOutport(0, 4.5, 2, true, "name", nullptr);
    node.DeleteStreams();
    put(node, 0, 3);
    for (BlockStream* stream : {&left, &right}) {
        Node next;
        next.SetInputStream(0, stream);
        EXPECT_EQ(take(next, 0), samples);
        EXPECT_EQ(take(next, 0), std::vector{4.5});
        EXPECT_TRUE(take(next, 0).empty());
    }
}

// Whichever allocation fails: nothing is taken, nothing written, no port changed.
TEST(BasisModule, LeavesBlocksAndPortsWhereTheyAreWhenMemoryIsExhausted) {
    const std::vector<double> signal(40000, 1.5);
    sweepAllocations([&](const FailingAllocator& memory) {
        Node node;
        BlockStream input, left, right;
        input.writeBlock(1, signal.data(), 40000);
        node.SetInputStream(0, &input);
        node.AddOutputStream(0, &left);
        node.AddOutputStream(0, &right);
        std::istringstream stream(archiveOf("V7", 3, 1));
        CArchive archive(stream, CArchive::load);
        double* array = nullptr;
        int count = 0;
        memory.arm();
        try {
            node.newAndReadArrayFromInport(0, array, count, true);
            node.writeArrayToOutport(0, array, count, 1, true, nullptr, nullptr);
            node.Serialize(archive);
        } catch (const std::bad_alloc&) {
        }
        const bool failed = FailingAllocator::disarm();
        EXPECT_EQ(outputKinds(node), failed ? plainKinds : extendedKinds);
        const std::unique_ptr<double[]> owner(array);
        EXPECT_EQ(input.waitingBlocks(), array != nullptr ? 0 : 1);
        EXPECT_EQ(left.waitingBlocks(), right.waitingBlocks());
    });
}
