#include "tests/frame/ModuleRig.h"
#include "tests/support/Person.h"
#include "tests/support/setVariable.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace std::string_literals;

// All values differ from those of a new module.
static const std::string changed =
    "\1\0\0\0\3\0\0\0\2\0\0\0\0\0\0\0\0\0\xe0\x3f\xff\xff\xff\xff\5\0\0\0"
    "\0\0\0\0\0\0\x04\xc0\6\0\0\0\7\0\0\x80"s;

TEST(Settings, TravelAsARecordOf44BytesTakenAsFarAsItGoes) {
    constexpr std::size_t ends[] = {0, 4, 8, 12, 20, 24, 28, 36, 40, 44};
    for (std::size_t length = 0; length <= 44; ++length) {
        const ModuleRig rig;
        EXPECT_EQ(stored(rig.module), graph("V1.91", 1, record({})));
        const bool whole = length == 44;
        EXPECT_EQ(load(rig.module, graph("V1.91", 3, changed.substr(0, length))),
                  whole ? CArchiveException::none : CArchiveException::endOfFile);
        const std::size_t taken = *(std::upper_bound(std::begin(ends), std::end(ends), length) - 1);
        EXPECT_EQ(stored(rig.module), graph("V1.91", whole ? 3 : 1,
                                            changed.substr(0, taken) + record({}).substr(taken)));
    }
}

TEST(Settings, OtherVersionIsShownAndLeavesAllAsItWas) {
    setVariable("LC_ALL", "de_DE.UTF-8");
    const Person person("");
    for (const char* version : {"V2.00", "v1.91", "V1.9", "V1.911", ""}) {
        const ModuleRig rig;
        EXPECT_EQ(load(rig.module, graph(version, 3, changed)), CArchiveException::badSchema);
        EXPECT_TRUE(stored(rig.module) == graph("V1.91", 1, record({})) &&
                    rig.module.GetPortType(outputPort, 1).IsEmpty());
    }
    const std::string message =
        "Die aus der Datei eingelesenen Werte sind inkompatibel zur gegenwärtig verwendeten "
        "Modulversion.\n\nDas Modul im Signalgraph wird durch die aktuelle Version ersetzt\nund "
        "mit Standard-Werten initialisiert!|";
    EXPECT_EQ(person.messages, message + message + message + message + message);
    EXPECT_EQ(person.messageFrame, "Fendra 48");
}
