#include "platform/CDialog.h"
#include "platform/Desktop.h"
#include "platform/DialogResource.h"
#include "platform/Windows1252.h"
#include "tests/frame/ModuleRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

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

struct MessageRecorder : Desktop {
    int messageBox(const CString& text, const CString& caption, unsigned style) override {
        messages.push_back(toUtf8(caption) + '|' + toUtf8(text) + '|' + std::to_string(style));
        return IDOK;
    }
    void runDialog(CDialog& /*dialog*/) override {}
    std::vector<std::string> messages;
};

TEST(Settings, OtherVersionIsShownAndLeavesAllAsItWas) {
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    MessageRecorder recorder;
    EXPECT_EQ(Desktop::install(&recorder), nullptr);
    for (const char* version : {"V2.00", "v1.91", "V1.9", "V1.911", ""}) {
        const ModuleRig rig;
        EXPECT_EQ(load(rig.module, graph(version, 3, changed)), CArchiveException::badSchema);
        EXPECT_TRUE(stored(rig.module) == graph("V1.91", 1, record({})) &&
                    rig.module.GetPortType(outputPort, 1).IsEmpty());
    }
    EXPECT_EQ(Desktop::install(nullptr), &recorder);
    const std::string message =
        "Fendra|Die aus der Datei eingelesenen Werte sind inkompatibel zur gegenwärtig "
        "verwendeten Modulversion.\n\nDas Modul im Signalgraph wird durch die aktuelle Version "
        "ersetzt\nund mit Standard-Werten initialisiert!|48";
    EXPECT_EQ(recorder.messages, std::vector<std::string>(5, message));
}
