#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/parts.h"
#include "workbench/parts/hdf5/Hdf5Handle.h"

#include <array>

// Files that few programs write, made by the library itself.

using Lengths = std::vector<hsize_t>;

namespace {

// A file being written.
class Hdf5Files : public testing::Test {
protected:
    Hdf5Files() { H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr); }

    template <typename Value>
    hid_t dataset(const std::string& name, hid_t type, const Lengths& shape,
                  const std::vector<Value>& values, hid_t memory, hid_t plan = H5P_DEFAULT) {
        const Lengths endless(shape.size(), H5S_UNLIMITED);  // as far as chunks can be added
        const Hdf5Handle space(H5Screate_simple(static_cast<int>(shape.size()), shape.data(),
                                                plan == H5P_DEFAULT ? nullptr : endless.data()),
                               H5Sclose);
        const hid_t id =
            H5Dcreate2(file.get(), name.c_str(), type, space.get(), H5P_DEFAULT, plan, H5P_DEFAULT);
        kept.emplace_back(id, H5Dclose);
        if (!values.empty()) {
            EXPECT_GE(H5Dwrite(id, memory, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()), 0);
        }
        return id;
    }

    hid_t numbers(const std::string& name, const Lengths& shape, const std::vector<double>& values,
                  hid_t plan = H5P_DEFAULT) {
        return dataset(name, H5T_IEEE_F64LE, shape, values, H5T_NATIVE_DOUBLE, plan);
    }

    // An attribute of the file.
    void setText(const char* name, const std::string& text) const {
        const Hdf5Handle object(H5Gopen2(file.get(), "/", H5P_DEFAULT), H5Gclose);
        const Hdf5Handle type(H5Tcopy(H5T_C_S1), H5Tclose), space(H5Screate(H5S_SCALAR), H5Sclose);
        H5Tset_size(type.get(), text.size());
        const Hdf5Handle attribute(
            H5Acreate2(object.get(), name, type.get(), space.get(), H5P_DEFAULT, H5P_DEFAULT),
            H5Aclose);
        H5Awrite(attribute.get(), type.get(), text.data());
    }

    // In chunks of that shape; deflated at that level.
    static Hdf5Handle chunked(const Lengths& chunk, unsigned level = 0) {
        Hdf5Handle plan(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
        H5Pset_chunk(plan.get(), static_cast<int>(chunk.size()), chunk.data());
        if (level > 0) {
            H5Pset_deflate(plan.get(), level);
        }
        return plan;
    }

    // From now on the file is read.
    void close() {
        kept.clear();
        file = Hdf5Handle(H5Pcreate(H5P_FILE_ACCESS), H5Pclose);
    }

    std::vector<FilePart> parts() const { return hdf5Part.parts(path, SourceName("f")); }

    std::unique_ptr<SignalReader> open(const std::string& part) const {
        ReadOptions options;
        options.part = part;
        return hdf5Part.open(path, SourceName("f"), options);
    }

    TemporaryFolder folder;
    std::string path = folder.path("s.h5");
    Hdf5Handle file{H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT), H5Fclose};
    std::vector<Hdf5Handle> kept;
};

}  // namespace

// Each is a double to the last bit, whatever its width.
TEST_F(Hdf5Files, HaveNumbersOfAnyWidth) {
    const Hdf5Handle brain(H5Tcopy(H5T_IEEE_F32LE), H5Tclose);  // 8 bits of exponent, 7 of fraction
    H5Tset_fields(brain.get(), 15, 7, 8, 0, 7);
    H5Tset_precision(brain.get(), 16);
    H5Tset_size(brain.get(), 2);
    const Hdf5Handle three(H5Tcopy(H5T_STD_I32BE), H5Tclose);
    H5Tset_precision(three.get(), 24);
    H5Tset_size(three.get(), 3);
    const Hdf5Handle colours(H5Tenum_create(H5T_STD_I16LE), H5Tclose);
    std::int16_t red = 0, blue = 300;
    H5Tenum_insert(colours.get(), "red", &red);
    H5Tenum_insert(colours.get(), "blue", &blue);
    dataset("brain", brain.get(), {3}, std::vector<float>{-0.15625F, 0x1p-126F, 3.0F},
            H5T_NATIVE_FLOAT);
    dataset("three", three.get(), {3}, std::vector<int>{-8388608, 8388607, -1}, H5T_NATIVE_INT);
    const Hdf5Handle native(H5Tget_native_type(colours.get(), H5T_DIR_DEFAULT), H5Tclose);
    dataset("colours", colours.get(), {3}, std::vector<std::int16_t>{300, 0, 300}, native.get());
    close();
    EXPECT_EQ(readSamples(*open("/brain")), (std::vector<double>{-0.15625, 0x1p-126, 3}));
    EXPECT_EQ(readSamples(*open("/three")), (std::vector<double>{-8388608, 8388607, -1}));
    EXPECT_EQ(readSamples(*open("/colours")), (std::vector<double>{300, 0, 300}));
    EXPECT_EQ(open("/brain")->info().format, "HDF5, 16-bit float");
    EXPECT_EQ(open("/three")->info().format, "HDF5, 24-bit integer");
}

// What is declared has to be stored; chunks that are, but deflated, are as good as others.
TEST_F(Hdf5Files, AreRefusedWhereTheyDeclareMoreThanTheyHold) {
    constexpr hsize_t much = hsize_t{1} << 28U;
    numbers("bomb", {much}, {}, chunked({much}, 9).get());
    numbers("plain", {much}, {}, chunked({much}).get());
    numbers("endless", {hsize_t{1} << 40U, hsize_t{1} << 40U}, {}, chunked({1, 1}).get());
    numbers("never", {3}, {});
    const hid_t some = numbers("some", {6}, {}, chunked({2}).get());
    const Lengths begin{2}, count{2};
    const Hdf5Handle space(H5Dget_space(some), H5Sclose);
    H5Sselect_hyperslab(space.get(), H5S_SELECT_SET, begin.data(), nullptr, count.data(), nullptr);
    const Hdf5Handle memory(H5Screate_simple(1, count.data(), nullptr), H5Sclose);
    const std::array<double, 2> two = {1, 2};
    H5Dwrite(some, H5T_NATIVE_DOUBLE, memory.get(), space.get(), H5P_DEFAULT, two.data());
    numbers("whole", {5}, {1, 2, 3, 4, 5}, chunked({2}, 9).get());
    close();
    for (const auto& [name, why] :
         {std::pair("/bomb", "f declares chunks of 2147483648 bytes, which a file of "),
          std::pair("/plain", "f declares chunks of 2147483648 bytes, which a file of "),
          std::pair("/endless", "samples, of which some or all were never written"),
          std::pair("/never", "f declares 3 samples that were never written"),
          std::pair("/some", "f declares 6 samples, of which some or all were never written")}) {
        const std::string failure = failureOf([&, part = name] { open(part); });
        EXPECT_NE(failure.find(why), std::string::npos) << name << ": " << failure;
    }
    EXPECT_EQ(readSamples(*open("/whole")), (std::vector<double>{1, 2, 3, 4, 5}));
}

// The library would take what stands behind a chunk that is too short for its dataset.
TEST_F(Hdf5Files, AreRefusedWhereChunksAreNotAsDeclared) {
    const std::vector<double> zeros(64);
    const Lengths origin{0};
    const hid_t half = numbers("half", {64}, zeros, chunked({64}, 9).get());
    H5Dflush(half);
    std::array<std::byte, 512> packed = {};
    hsize_t size = 0;
    std::uint32_t mask = 0;
    H5Dget_chunk_storage_size(half, origin.data(), &size);
    H5Dread_chunk(half, H5P_DEFAULT, origin.data(), &mask, packed.data());
    const hid_t other = numbers("short", {128}, {}, chunked({128}, 9).get());
    H5Dwrite_chunk(other, H5P_DEFAULT, 0, origin.data(), size, packed.data());
    const hid_t bare = numbers("bare", {64}, {}, chunked({64}, 9).get());
    H5Dwrite_chunk(bare, H5P_DEFAULT, 1, origin.data(), size, packed.data());
    Hdf5Handle plan = chunked({64});
    H5Pset_fletcher32(plan.get());
    H5Pset_shuffle(plan.get());
    H5Pset_deflate(plan.get(), 9);
    H5Pset_fletcher32(plan.get());
    numbers("whole", {64}, zeros, plan.get());
    plan = chunked({64}, 9);
    H5Pset_shuffle(plan.get());
    H5Pset_deflate(plan.get(), 9);
    numbers("twice", {64}, zeros, plan.get());
    plan = chunked({100}, 9);
    H5Pset_chunk_opts(plan.get(), H5D_CHUNK_DONT_FILTER_PARTIAL_CHUNKS);
    numbers("partial", {64}, zeros, plan.get());
    close();
    for (const char* name : {"/short", "/bare"}) {
        EXPECT_NE(failureOf([&] { open(name); }).find("chunks do not hold the values"),
                  std::string::npos)
            << name;
    }
    for (const char* name : {"/half", "/whole", "/twice", "/partial"}) {
        EXPECT_EQ(readSamples(*open(name)), zeros) << name;
    }
}

// A group that holds the one that it is in, and second names.
TEST_F(Hdf5Files, ListEachDatasetOnce) {
    numbers("b", {2}, {1, 2});
    kept.emplace_back(H5Gcreate2(file.get(), "a", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT), H5Gclose);
    H5Lcreate_hard(file.get(), "/", file.get(), "a/root", H5P_DEFAULT, H5P_DEFAULT);
    H5Lcreate_hard(file.get(), "/b", file.get(), "c", H5P_DEFAULT, H5P_DEFAULT);
    H5Lcreate_soft("/b", file.get(), "d", H5P_DEFAULT, H5P_DEFAULT);
    numbers("x", {2}, {1, 2});
    close();
    const std::vector<FilePart> found = parts();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name, "/b");
    EXPECT_EQ(found[1].name, "/x");
}

TEST_F(Hdf5Files, OfResponsesHaveTheRateOfEachMeasurement) {
    setText("Conventions", "SOFA");
    numbers("Data.IR", {2, 1, 3}, {1, 2, 3, 4, 5, 6});
    numbers("Data.SamplingRate", {2}, {48000, 0});
    numbers("Data.Delay", {2, 1}, {0, 7});
    close();
    const auto reader = open("1");
    EXPECT_EQ(reader->info().rate, 48000);
    EXPECT_TRUE(reader->info().remarks.empty());
    EXPECT_EQ(readSamples(*reader), (std::vector<double>{1, 2, 3}));
    EXPECT_NE(failureOf([&] { open("2"); }).find("Data.SamplingRate is not a rate in Hz"),
              std::string::npos);
    for (const char* wrong : {"0", "3", "1x", "-1", ""}) {
        EXPECT_NE(failureOf([&] { open(wrong); }).find("have the numbers 1 to 2; choose one"),
                  std::string::npos)
            << wrong;
    }
}

TEST_F(Hdf5Files, OfResponsesRemarkOnDelays) {
    setText("Conventions", "SOFA");
    numbers("Data.IR", {2, 1, 3}, {1, 2, 3, 4, 5, 6});
    numbers("Data.SamplingRate", {1}, {8000});
    numbers("Data.Delay", {2, 1}, {0, 7});
    close();
    EXPECT_TRUE(open("1")->info().remarks.empty());
    EXPECT_EQ(open("2")->info().remarks,
              std::vector<std::string>{
                  "f: the delays in Data.Delay are not in the samples, and are left out"});
}
