#include "fuzz/fuzz.h"
#include "fuzz/modules.h"
#include "host/LaunchHelp.h"
#include "platform/CDialog.h"
#include "platform/Desktop.h"
#include "resources/resources.h"

#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <limits>

// An input is the settings that a module starts from, and then what a person does in its settings
// dialog: clicks, typed texts, choices from the list. The person ends with OK, and with Cancel if
// that is refused.

static constexpr unsigned ids[] = {0,
                                   IDOK,
                                   IDCANCEL,
                                   buttonHelp,
                                   radioTimeDomain,
                                   radioFrequencyDomain,
                                   radioVanCittert,
                                   radioPseudoInverse,
                                   radioConvolution,
                                   radioDeconvolution,
                                   editConvergence,
                                   editMaxIterations,
                                   checkAbortAtError,
                                   checkAbortAtMinError,
                                   editErrorValue,
                                   listScaling,
                                   radioPerBlock,
                                   radioPerPacket,
                                   4711};

static bool isChecked(const CDialog& dialog, unsigned id) {
    return dialog.control(id)->checked;
}

static bool isEnabled(const CDialog& dialog, unsigned id) {
    return dialog.control(id)->enabled;
}

// What is enabled follows from what is checked.
static void requireTableOfStates(const CDialog& dialog) {
    const bool convolution = isChecked(dialog, radioConvolution);
    const bool iterates = isChecked(dialog, radioVanCittert);
    const bool filters = isChecked(dialog, radioPseudoInverse);
    for (const unsigned id : {radioPerBlock, radioPerPacket, radioFrequencyDomain, radioConvolution,
                              radioDeconvolution, unsigned{IDOK}, unsigned{IDCANCEL}, buttonHelp}) {
        require(isEnabled(dialog, id), "what applies always is enabled");
    }
    require(isEnabled(dialog, radioTimeDomain) == convolution &&
                isEnabled(dialog, radioVanCittert) == !convolution &&
                isEnabled(dialog, radioPseudoInverse) == !convolution,
            "the direction enables its methods");
    for (const unsigned id : {radioTimeDomain, radioVanCittert, radioPseudoInverse}) {
        require(isEnabled(dialog, id) || !isChecked(dialog, id), "a chosen method is enabled");
    }
    for (const unsigned id :
         {editConvergence, editMaxIterations, checkAbortAtError, checkAbortAtMinError}) {
        require(isEnabled(dialog, id) == iterates, "the iteration enables its parameters");
    }
    require(isEnabled(dialog, editErrorValue) == (iterates && isChecked(dialog, checkAbortAtError)),
            "the error value needs its check box");
    require(isEnabled(dialog, listScaling) == filters, "the filter enables its scaling");
}

// Position of the one checked radio of a group; -1: none.
static int chosen(const CDialog& dialog, std::initializer_list<unsigned> group) {
    int position = -1, index = 0;
    for (const unsigned id : group) {
        if (isChecked(dialog, id)) {
            require(position < 0, "one radio of a group is checked");
            position = index;
        }
        ++index;
    }
    return position;
}

static std::string textOf(const CDialog& dialog, unsigned id) {
    const CString& text = dialog.control(id)->text;
    std::string bytes(text, static_cast<std::size_t>(text.GetLength()));
    bytes.erase(bytes.find_last_not_of(" \t") + 1);
    bytes.erase(0, bytes.find_first_not_of(" \t"));
    return bytes;
}

static std::uint32_t wholeNumber(const std::string& text) {
    std::uint64_t number = 0;
    require(!text.empty(), "OK takes no empty text for a number");
    for (const char digit : text) {
        require(digit >= '0' && digit <= '9', "OK takes digits alone for a whole number");
        number = number * 10 + static_cast<std::uint64_t>(digit - '0');
        require(number <= std::numeric_limits<std::uint32_t>::max(),
                "OK takes no number too large");
    }
    return static_cast<std::uint32_t>(number);
}

static double realNumber(const std::string& text) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    require(!text.empty() && end == text.c_str() + text.size() && std::isfinite(number),
            "OK takes finite numbers alone");
    return number;
}

// A stored module, by way of what each control shows.
static std::string graphOf(const CDialog& dialog) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    const int method = chosen(
        dialog, {radioTimeDomain, radioFrequencyDomain, radioVanCittert, radioPseudoInverse});
    const int direction = chosen(dialog, {radioConvolution, radioDeconvolution});
    const double errorValue = realNumber(textOf(dialog, editErrorValue));
    require(errorValue >= 0.0 && errorValue <= 1e308, "OK keeps the error value in its range");
    archive << CString("V1.91") << (direction == 1 && method >= 2 ? 3 : 1)
            << chosen(dialog, {radioPerBlock, radioPerPacket}) << method << direction
            << realNumber(textOf(dialog, editConvergence))
            << wholeNumber(textOf(dialog, editMaxIterations))
            << (isChecked(dialog, checkAbortAtError) ? 1 : 0) << errorValue
            << (isChecked(dialog, checkAbortAtMinError) ? 1 : 0)
            << dialog.control(listScaling)->selection;
    return stream.str();
}

// All that a person can see of the dialog.
static std::string describe(const CDialog& dialog) {
    std::string text;
    for (const DialogControl& control : dialog.controls()) {
        text += std::to_string(control.resource->id) + (control.enabled ? '+' : '-') +
                (control.checked ? 'x' : 'o') + std::to_string(control.selection);
        text.append(control.text, static_cast<std::size_t>(control.text.GetLength())) += '|';
    }
    return text;
}

namespace {

class Person : public Desktop {
public:
    explicit Person(InputReader& actions) : input(actions) {
        install(this);
        installHelpLauncher([](const CString& /*file*/, const CString& /*key*/) {});
    }
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;
    ~Person() override { install(nullptr); }

    int messageBox(const CString& text, const CString& /*caption*/, unsigned /*style*/) override {
        require(!text.IsEmpty(), "a message says something");
        ++messages;
        return IDOK;
    }

    void runDialog(CDialog& dialog) override {
        requireTableOfStates(dialog);
        while (!input.isEmpty() && !dialog.hasEnded()) {
            act(dialog);
        }
        dialog.click(IDOK);
        dialog.cancel();
        require(dialog.hasEnded(), "OK or Cancel ends the dialog");
        if (dialog.answer() == IDOK) {
            shown = graphOf(dialog);
        }
    }

    std::string shown;  // the module that was agreed to; empty: none

private:
    void act(CDialog& dialog) {
        const std::uint8_t action = input.byte();
        const unsigned id = ids[action % std::size(ids)];
        const std::string before = describe(dialog);
        const DialogControl* const control = dialog.control(id);
        const bool usable = control != nullptr && control->enabled;
        const int messagesBefore = messages;
        bool done = false;
        if (control != nullptr && control->resource->kind == ControlKind::edit) {
            const std::string_view text = input.text(input.byte() % 32);
            done = dialog.type(id, {text.data(), static_cast<int>(text.size())});
        } else if (id == listScaling) {
            done = dialog.select(id, static_cast<std::int8_t>(input.byte()));
        } else {
            done = dialog.click(id);
        }
        require(usable || !done, "a disabled control takes nothing");
        require(done || describe(dialog) == before, "what is refused changes nothing");
        if (id == IDOK) {
            require(dialog.hasEnded() == (messages == messagesBefore), "OK ends or says why not");
            require(dialog.hasEnded() == (dialog.failedControl() == 0), "and shows where");
        }
        require(!dialog.hasEnded() || id == IDOK || id == IDCANCEL, "two buttons end the dialog");
        requireTableOfStates(dialog);
    }

    InputReader& input;
    int messages = 0;
};

}  // namespace

// Settings, bytes of the input for each; small whole numbers that a file alone can hold among them.
static std::string initialGraph(InputReader& input) {
    std::ostringstream stream;
    CArchive archive(stream, CArchive::store);
    const auto small = [&input] {
        return static_cast<std::int32_t>(static_cast<std::int8_t>(input.byte()));
    };
    const std::int32_t executionMode = small(), method = small(), direction = small();
    archive << CString("V1.91") << (direction != 0 && (method == 2 || method == 3) ? 3 : 1)
            << executionMode << method << direction;
    std::string bytes = stream.str();
    bytes += input.text(44 - 12);
    bytes.resize(13 + 44);
    return bytes;
}

// Whether the direction is one of the dialog's. For any other, which only a file can hold, no
// control shows the outputs.
static bool isOffered(const std::string& graph) {
    const auto direction = static_cast<unsigned char>(graph[13 + 8]);
    return direction == 0 || direction == 1;
}

void fuzzOne(Bytes input) {
    InputReader reader(input);
    const ModuleHandle module = makeModule();
    const std::string before = initialGraph(reader);
    require(loads(*module, before) && stored(*module) == before, "the settings are those given");

    Person person(reader);
    RET_PORT changed;
    const PORTTYPE answer = module->OnLeftDblClk(changed);
    const std::string after = stored(*module);
    if (person.shown.empty()) {
        require(answer == noPort && after == before, "without OK all is as it was");
    } else {
        const ModuleHandle second = makeModule();
        require(loads(*second, after) && stored(*second) == after, "what OK stores loads again");
        require(!isOffered(before) || after == person.shown, "OK takes what the controls show");
        require(!isOffered(before) || (answer == outputPort) == (before[9] != after[9]),
                "a change of outputs is told");
    }
    require(answer == outputPort ? changed.flag == 1 && changed.ports.GetSize() == 2
                                 : changed.flag == 0 && changed.ports.GetSize() == 0,
            "ports are listed if they changed");
}
