#include "frame/FoldModule.h"

#include <charconv>
#include <cstdio>
#include <string>

static void writeLine(CArchive& archive, const char* text, const std::string& value = {}) {
    char line[100];
    std::snprintf(line, sizeof line, "%s%s\r\n", text, value.c_str());
    archive.WriteString(line);
}

// As %g writes it where the decimal point is a point: the report does not depend on the locale that
// the process has set.
static std::string general(double value) {
    char text[16];
    const auto written =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6);
    return {text, written.ptr};
}

// The texts are fixed, trailing blanks and "Abbruch minimalem" included: programs read them. Every
// method but the time domain counts as the frequency domain in the second line, the iteration too.
void FoldModule::writeReport(CArchive& archive) {
    const FoldSettings& s = settings;
    writeLine(archive, s.executionMode == FoldSettings::perBlock
                           ? "      Abarbeitung erfolgt blockweise"
                           : "      Abarbeitung erfolgt paketweise");
    writeLine(archive, s.method == FoldSettings::timeDomain
                           ? "      Faltung wird im Zeitbereich ausgef\xfchrt"
                           : "      Faltung wird im Frequenzbereich ausgef\xfchrt");
    writeLine(archive, s.direction == FoldSettings::convolution
                           ? "      Es ist Faltung eingestellt"
                           : "      Es ist Entfaltung eingestellt");
    writeLine(archive, "      Parameter f\xfcr Entfaltung nach van Cittert : ");
    writeLine(archive, "          Konvergenzparameter : ", general(s.convergence));
    // Signed, unlike the setting itself: beyond 2^31 - 1 the report counts from -2^31.
    writeLine(archive, "          Maximale Anzahl der Iterationen : ",
              std::to_string(static_cast<std::int32_t>(s.maxIterations)));
    writeLine(archive,
              "          Abbruch bei bestimmten Fehlerwert : ", std::to_string(s.abortAtError));
    writeLine(archive, "          Fehlerwert : ", general(s.errorValue));
    writeLine(archive,
              "          Abbruch minimalem Fehlerwert : ", std::to_string(s.abortAtMinError));
    writeLine(archive, "      Parameter f\xfcr Entfaltung mit inversem Filter : ");
    writeLine(archive, "          Skalierung : ", std::to_string(s.scaling));
    writeLine(archive, "");
}
