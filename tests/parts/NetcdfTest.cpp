#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/parts/Part.h"

extern const Part netcdfPart;

static std::string number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) {
        text += static_cast<char>(value >> static_cast<unsigned>(8 * i) & 0xffU);
    }
    return text;
}

namespace {

// A file with one dimension n and one variable v along it, as the format lays it down.
struct Classic {
    int version = 1;
    std::uint64_t records = 0, length = 3, dimension = 0, type = 3;
    std::string data;

    std::string bytes() const {
        const int wide = version == 5 ? 8 : 4;
        const auto name = [wide](char letter) {
            return number(1, wide) + letter + std::string(3, '\0');
        };
        std::string file = "CDF" + number(static_cast<std::uint64_t>(version), 1);
        file += number(records, wide) + number(10, 4) + number(1, wide) + name('n');
        file += number(length, wide) + number(0, 4 + wide) + number(11, 4) + number(1, wide);
        file += name('v') + number(1, wide) + number(dimension, wide) + number(0, 4 + wide);
        file += number(type, 4) + number(0, wide);
        const int offset = version == 1 ? 4 : 8;
        file += number(file.size() + static_cast<std::size_t>(offset), offset);
        return file + data;
    }
};

}  // namespace

static std::unique_ptr<SignalReader> open(const std::string& path, const std::string& part,
                                          bool lossy = false) {
    ReadOptions options;
    options.part = part;
    options.lossy = lossy;
    return netcdfPart.open(path, SourceName(path), options);
}

TEST(Netcdf, ReadsTheVersionsOfTheFormat) {
    const TemporaryFolder folder;
    const std::string shorts = number(1, 2) + number(65535, 2) + number(7, 2);
    for (const int version : {1, 2, 5}) {
        for (const bool record : {false, true}) {
            const Classic file{version, 3, record ? 0U : 3U, 0, 3, shorts};
            const auto reader = open(folder.write("s.nc", file.bytes()), "v");
            EXPECT_EQ(readSamples(*reader), (std::vector<double>{1, -1, 7})) << version;
        }
    }
}

TEST(Netcdf, RoundsIntegersBeyond53BitsOnlyWhenAsked) {
    const TemporaryFolder folder;
    for (const std::uint64_t type : {10U, 11U}) {
        const Classic file{
            5, 0,    2,
            0, type, number(std::uint64_t{1} << 53U, 8) + number((std::uint64_t{1} << 53U) + 1, 8)};
        const std::string path = folder.write("s.nc", file.bytes());
        EXPECT_NE(failureOf([&] {
                      readSamples(*open(path, "v"));
                  }).find("s.nc, sample 2, channel 1: an integer beyond 2^53"),
                  std::string::npos);
        EXPECT_EQ(readSamples(*open(path, "v", true)), (std::vector<double>{0x1p53, 0x1p53}));
    }
}

// The library would give zeros for what is missing. Records of one variable are not padded.
TEST(Netcdf, IsRefusedWhereverItIsCut) {
    const TemporaryFolder folder;
    const Classic records{1, 3, 0, 0, 3, "123456"};
    for (const std::string& whole : {TemporaryFolder::contents("chromatogram.cdf"),
                                     TemporaryFolder::contents("stations.nc"), records.bytes()}) {
        const std::string path = folder.write("t", whole);
        EXPECT_EQ(failureOf([&] { netcdfPart.parts(path, SourceName(path)); }), "");
        for (std::size_t length = whole.size(); length-- > 0;) {
            std::filesystem::resize_file(path, length);
            EXPECT_NE(failureOf([&] { netcdfPart.parts(path, SourceName(path)); }), "") << length;
        }
    }
}

TEST(Netcdf, RefusesAtOnceWhatTheFileDoesNotHold) {
    const TemporaryFolder folder;
    const auto refused = [&](const Classic& file, const std::string& why) {
        const std::string path = folder.write("s.nc", file.bytes());
        const std::string failure = failureOf([&] { open(path, "v"); });
        EXPECT_NE(failure.find(why), std::string::npos) << failure;
    };
    refused({1, 0, 0x7fffffff, 0, 6, "12345678"}, "s.nc is truncated: its header declares ");
    refused({5, 0, std::uint64_t{1} << 60U, 0, 6, "12345678"}, "is truncated");
    refused({5, std::uint64_t{1} << 60U, 0, 0, 6, "12345678"}, "is truncated");
    refused({1, 0, 3, 9, 3, "123456"}, "the header of the NetCDF file cannot be read");
    refused({1, 0, 3, 0, 13, "123456"}, "the header of the NetCDF file cannot be read");
    refused({1, 0, 0, 0, 3, ""}, "holds no samples");
    refused({1, 0, 3, 0, 2, "abc"}, "holds text");
}
