#include "tests/frame/ModuleRig.h"

#include <gtest/gtest.h>

#include <array>

using namespace std::string_literals;

static std::string reportOf(B_BasisModule& module) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    module.WriteReport(archive);
    return stream.str();
}

// In German and in Windows-1252, whatever the language.
static std::string report(const std::string& execution, const std::string& domain,
                          const std::string& direction, const std::array<const char*, 6>& values) {
    return "      Abarbeitung erfolgt " + execution + "\r\n      Faltung wird im " + domain +
           " ausgef\xfchrt\r\n      Es ist " + direction +
           " eingestellt\r\n"
           "      Parameter f\xfcr Entfaltung nach van Cittert : \r\n"
           "          Konvergenzparameter : " +
           values[0] + "\r\n          Maximale Anzahl der Iterationen : " + values[1] +
           "\r\n          Abbruch bei bestimmten Fehlerwert : " + values[2] +
           "\r\n          Fehlerwert : " + values[3] +
           "\r\n          Abbruch minimalem Fehlerwert : " + values[4] +
           "\r\n      Parameter f\xfcr Entfaltung mit inversem Filter : \r\n"
           "          Skalierung : " +
           values[5] + "\r\n\r\n";
}

TEST(Report, HasTwelveLines) {
    const ModuleRig fresh, filter({.direction = 1, .method = 3}, 3), other;
    EXPECT_EQ(reportOf(fresh.module), report("blockweise", "Frequenzbereich", "Faltung",
                                             {"1", "100", "0", "0.01", "1", "4"}));
    EXPECT_EQ(reportOf(filter.module), report("blockweise", "Frequenzbereich", "Entfaltung",
                                              {"1", "100", "0", "0.01", "1", "4"}));
    // convergence -1.5e-9, maxIterations 2^32 - 2, abortAtError -3, errorValue 1234567,
    // abortAtMinError 2, scaling 2
    const std::string settings =
        "\1\0\0\0\0\0\0\0\1\0\0\0\xdf\x41\x3a\xdc\x11\xc5\x19\xbe\xfe\xff\xff\xff"
        "\xfd\xff\xff\xff\0\0\0\0\x87\xd6\x32\x41\2\0\0\0\2\0\0\0"s;
    ASSERT_EQ(load(other.module, graph("V1.91", 1, settings)), CArchiveException::none);
    EXPECT_EQ(reportOf(other.module), report("paketweise", "Zeitbereich", "Entfaltung",
                                             {"-1.5e-09", "-2", "-3", "1.23457e+06", "2", "2"}));
}
