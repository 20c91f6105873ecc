#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/parts.h"

#include <array>
#include <netcdf.h>

static std::string number(std::uint64_t value, int bytes) {
    std::string text(static_cast<std::size_t>(bytes), '\0');
    for (; bytes > 0; value >>= 8U) {
        text[static_cast<std::size_t>(--bytes)] = static_cast<char>(value & 0xffU);
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

// By its own library, which keeps them in HDF5: packed and deflated along an unlimited dimension,
// beside a dimension without points.
TEST(Netcdf, FilesOfVersion4AreReadAsHdf5) {
    const TemporaryFolder folder;
    const std::string path = folder.path("s.nc");
    int file = 0, time = 0, points = 0, values = 0;
    std::array<int, 2> dimensions = {};
    ASSERT_EQ(nc_create(path.c_str(), NC_NETCDF4, &file), 0);
    nc_def_dim(file, "time", NC_UNLIMITED, dimensions.data());
    nc_def_dim(file, "channel", 2, dimensions.data() + 1);
    time = dimensions[0];
    nc_def_var(file, "time", NC_DOUBLE, 1, &time, &points);
    nc_put_att_text(file, points, "units", 2, "ms");
    nc_def_var(file, "level", NC_SHORT, 2, dimensions.data(), &values);
    nc_put_att_text(file, values, "units", 2, "mV");
    const double scale = 0.5;
    nc_put_att_double(file, values, "scale_factor", NC_DOUBLE, 1, &scale);
    nc_def_var_deflate(file, values, 1, 1, 5);
    const std::array<std::size_t, 2> start = {}, count = {3, 2};
    const std::array<double, 3> times = {0, 2.5, 5};
    const std::array<short, 6> levels = {1, 2, 3, 4, 5, -6};
    nc_put_vara_double(file, points, start.data(), count.data(), times.data());
    nc_put_vara_short(file, values, start.data(), count.data(), levels.data());
    ASSERT_EQ(nc_close(file), 0);

    const SourceName source(path);
    ASSERT_EQ(hdf5Part.parts(path, source).size(), 2U);
    ReadOptions options;
    options.part = "/level";
    const auto reader = hdf5Part.open(path, source, options);
    EXPECT_EQ(reader->info().format, "NetCDF-4, 16-bit integer");
    EXPECT_EQ(reader->info().rate, 400);
    EXPECT_EQ(reader->info().names, (std::vector<std::string>{"level_1 (mV)", "level_2 (mV)"}));
    EXPECT_EQ(readSamples(*reader), (std::vector<double>{0.5, 1, 1.5, 2, 2.5, -3}));
}

namespace {

struct Chromatogram {
    float interval = 0.1F, delay = 0;
    std::string unit;  // of retention times
};

}  // namespace

static std::unique_ptr<SignalReader> opened(const TemporaryFolder& folder,
                                            const Chromatogram& chromatogram) {
    const std::string path = folder.path("s.cdf");
    int file = 0, points = 0, interval = 0, delay = 0, values = 0;
    EXPECT_EQ(nc_create(path.c_str(), NC_CLOBBER, &file), 0);
    nc_put_att_text(file, NC_GLOBAL, "retention_unit", chromatogram.unit.size(),
                    chromatogram.unit.data());
    nc_def_dim(file, "point_number", 3, &points);
    nc_def_var(file, "actual_sampling_interval", NC_FLOAT, 0, nullptr, &interval);
    nc_def_var(file, "actual_delay_time", NC_FLOAT, 0, nullptr, &delay);
    nc_def_var(file, "ordinate_values", NC_FLOAT, 1, &points, &values);
    nc_enddef(file);
    nc_put_var_float(file, interval, &chromatogram.interval);
    nc_put_var_float(file, delay, &chromatogram.delay);
    const std::array<float, 3> samples = {1, 2, 3};
    nc_put_var_float(file, values, samples.data());
    EXPECT_EQ(nc_close(file), 0);
    return open(path, "ordinate_values");
}

// An interval in 32 bits stands for the whole number of Hz, or of tenths of a second, that it may
// be.
TEST(Netcdf, ChromatogramsHaveTheRateThatIsMeant) {
    const TemporaryFolder folder;
    for (const auto& [chromatogram, rate] :
         {std::pair(Chromatogram{0.1F, 0, "seconds"}, 10.0),
          std::pair(Chromatogram{1.0F / 60, 0, ""}, 60.0),
          std::pair(Chromatogram{1.0F / 300, 0, "minutes"}, 5.0),
          std::pair(Chromatogram{1.3F, 0, "Seconds"}, 10.0 / 13),
          std::pair(Chromatogram{0.123456F, 0, ""}, 1 / static_cast<double>(0.123456F)),
          std::pair(Chromatogram{0, 0, ""}, 0.0), std::pair(Chromatogram{-1, 0, ""}, 0.0)}) {
        const auto reader = opened(folder, chromatogram);
        EXPECT_EQ(reader->info().rate, rate) << chromatogram.interval;
        EXPECT_EQ(reader->info().remarks.empty(), rate > 0);
        EXPECT_FALSE(reader->info().axis);
    }
}

TEST(Netcdf, ChromatogramsBeginAfterTheirDelay) {
    const TemporaryFolder folder;
    const SignalInfo late = opened(folder, {0.5F, 1.5F, "min"})->info();
    ASSERT_TRUE(late.axis);
    EXPECT_EQ(late.axis->start, 90);
    EXPECT_EQ(late.axis->step, 30);
    EXPECT_TRUE(late.axis->time);
}
