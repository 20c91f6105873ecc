#include "platform/CArchive.h"

#include "tests/support/Archives.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

// -2, 3000000000, 1.5 = 2^0 (1 + 1/2), a text with a zero byte, an empty one, and bytes alone.
static const std::string record =
    "\xfe\xff\xff\xff\x00\x5e\xd0\xb2\x00\x00\x00\x00\x00\x00\xf8\x3f"
    "\x03\x00\x00\x00V\x00\xfc\x00\x00\x00\x00"
    "end\r\n"s;

TEST(CArchive, StoresLittleEndianValuesWithoutGaps) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    archive << -2 << 3000000000U << 1.5 << CString("V\0\xfc", 3) << CString();
    archive.WriteString("end\r\n");
    EXPECT_EQ(stream.str(), record);
}

TEST(CArchive, LoadsThemAndLeavesAVariableThatTheStreamDoesNotHold) {
    for (std::size_t length = 0; length <= 27; ++length) {
        std::istringstream source(record.substr(0, length));
        CArchive archive(source, CArchive::load);
        int whole = 7;
        unsigned natural = 7;
        double real = 7;
        CString text = "7", empty = "7";
        EXPECT_EQ(causeOf([&] { archive >> whole >> natural >> real >> text >> empty; }),
                  length < 27 ? CArchiveException::endOfFile : CArchiveException::none);
        EXPECT_TRUE(whole == (length < 4 ? 7 : -2) && natural == (length < 8 ? 7 : 3000000000U));
        EXPECT_TRUE(real == (length < 16 ? 7 : 1.5) && empty == (length < 27 ? "7" : ""));
        EXPECT_TRUE(length < 23 ? text == "7" : std::string(text, 3) == "V\0\xfc"s);
    }
}

TEST(CArchive, ReadsATextInPiecesWhateverItsLength) {
    const std::string text(200000, 'x');
    for (const auto& [length, whole] : {std::pair{"\x40\x0d\x03\0"s, true},
                                        {"\x41\x0d\x03\0"s, false},
                                        {"\xff\xff\xff\xff"s, false}}) {
        std::istringstream source(length + text);
        CArchive archive(source, CArchive::load);
        CString read;
        EXPECT_EQ(causeOf([&] { archive >> read; }) == CArchiveException::none, whole);
        EXPECT_EQ(read, whole ? text.c_str() : "");
    }
}

TEST(CArchive, RaisesTheCauseOfWhatItCannotDo) {
    std::istringstream stream(record);  // its buffer takes no bytes
    CArchive loading(stream, CArchive::load), storing(stream, CArchive::store);
    double value = 0;
    EXPECT_EQ(causeOf([&] { loading.WriteString("x"); }), CArchiveException::readOnly);
    EXPECT_EQ(causeOf([&] { storing >> value; }), CArchiveException::writeOnly);
    EXPECT_EQ(causeOf([&] { storing << value; }), CArchiveException::genericException);
}
