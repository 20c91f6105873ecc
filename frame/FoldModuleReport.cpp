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

void FoldModule::writeReport(CArchive& archive) {
    const FoldSettings& s = settings;
    writeLine(archive, s.executionMode == 0 ? "      Abarbeitung erfolgt blockweise"
                                            : "      Abarbeitung erfolgt paketweise");
    writeLine(archive, s.method == 0 ? "      Faltung wird im Zeitbereich ausgef\xfchrt"
                                     : "      Faltung wird im Frequenzbereich ausgef\xfchrt");
    writeLine(archive, s.direction == 0 ? "      Es ist Faltung eingestellt"
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
