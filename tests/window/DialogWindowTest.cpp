#include "tests/support/Archives.h"
#include "tests/window/DialogScreen.h"
#include "workbench/messages/Failure.h"
#include "workbench/module/FendraModule.h"

#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QScreen>
#include <QTextBrowser>
#include <QWindow>

#include <algorithm>
#include <set>

// Qt's pool of threads synchronises by means that the thread sanitizer does not see, since Qt is
// not built with it. What Qt and glib themselves copy and free is left out, and nothing of ours.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): the sanitizer's name.
extern "C" const char* __tsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libQt6Core.so\n"
           "called_from_lib:libQt6Gui.so\n"
           "called_from_lib:libglib-2.0.so\n";
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace {

// A language, its mnemonics, and what its windows say.
struct Words {
    const char* language;
    char deconvolution, vanCittert, pseudoInverse, iterations, abortAtError, scaling;
    const char *iterationsField, *complaint, *helpButton, *helpTitle;
    const char *half, *wrongNumber;  // a comma in English is not a decimal point
    const char* firstChoice;
};

}  // namespace

constexpr Words allWords[] = {
    {"de_DE", 'e', 'c', 't', 'i', 'u', 's', "Maximale Anzahl der Iterationen", "ganze Zahl",
     "Hilfe", "Fendra: die Einstellungen", "0,5", "1.5", "\"Entfaltung\""},
    {"en_GB", 'd', 'm', 'o', 'x', 'b', 's', "Maximum number of iterations", "whole number", "Help",
     "Fendra: the settings", "0.5", "1,5", "\"Deconvolution\""},
    {"fr_FR", 'd', 'f', 'o', 'i', 'b', 'g', "Nombre max. des itérations", "nombre entier", "Aide",
     "Fendra : les réglages", "0,5", "1.5", "\"Déconvolution (depliément)\""},
};

namespace {

class DialogWindowTest : public testing::TestWithParam<Words>, protected DialogScreen {
protected:
    DialogWindowTest() : DialogScreen(GetParam().language) {}

    std::string storedAs(const FendraSettings& settings) const {
        const ModuleObject other = library.makeModule();
        applySettings(settings, *other);
        return stored(*other);
    }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Languages, DialogWindowTest, testing::ValuesIn(allWords),
                         [](const auto& words) { return std::string(words.param.language); });

static FendraSettings iterating() {
    FendraSettings settings;
    settings.direction = FendraSettings::deconvolution;
    settings.method = FendraSettings::vanCittert;
    settings.abortAtError = 1;
    return settings;
}

TEST_P(DialogWindowTest, IsAnsweredByKeysAlone) {
    const Words& words = GetParam();
    FendraSettings expected = iterating();
    expected.maxIterations = 30;
    expected.errorValue = 0.5;
    const PORTTYPE answer = open([&] {
        pressAlt(words.deconvolution);
        pressAlt(words.vanCittert);
        pressAlt(words.iterations);
        type("30");
        pressAlt(words.abortAtError);
        press(Qt::Key_Tab);
        type(words.half);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(outputPort, answer);
    EXPECT_EQ(storedAs(expected), stored(*module));

    expected.method = FendraSettings::pseudoInverse;
    expected.scaling = 0;
    open([&] {
        pressAlt(words.pseudoInverse);
        pressAlt(words.scaling);
        press(Qt::Key_Home);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(storedAs(expected), stored(*module));
}

// A radio group is one stop, at its checked radio; what is disabled is none.
TEST_P(DialogWindowTest, TabStopsInTheOrderOfTheTemplate) {
    applySettings(iterating(), *module);
    Ids forth, back;
    open([&] {
        do {
            forth.push_back(focus());
            press(Qt::Key_Tab);
        } while (focus() != forth.front() && forth.size() < 30);
        do {
            press(Qt::Key_Backtab);
            back.insert(back.begin(), focus());
        } while (focus() != forth.front() && back.size() < 30);
    });
    EXPECT_EQ((Ids{1040, 1026, 1027, 1030, 1031, 1032, 1034, 1033, IDOK, IDCANCEL, 1002}), forth);
    EXPECT_EQ(forth, back);
}

// Arrows choose within a group, as a click does: what a choice enables follows at once.
TEST_P(DialogWindowTest, ArrowsAndClicksEnableWhatApplies) {
    std::vector<std::pair<Ids, Ids>> seen;
    const auto look = [&seen] { seen.emplace_back(checked(), disabled()); };
    open([&] {
        click(1023);
        click(1025);
        press(Qt::Key_Down);
        look();
        click(1028);
        click(1027);
        click(1032);
        look();
    });
    const std::vector<std::pair<Ids, Ids>> expected = {
        {{1040, 1026, 1024, 1033}, {1023, 1030, 1031, 1032, 1034, 1033, 1036}},
        {{1040, 1026, 1027, 1032, 1033}, {1023, 1036}}};
    EXPECT_EQ(expected, seen);
}

TEST_P(DialogWindowTest, EscapeCloseBoxAndCancelChangeNothing) {
    const std::string asItWas = stored(*module);
    const std::function<void()> leave[] = {[] { press(Qt::Key_Escape); }, [] { dialog().close(); },
                                           [] { click(IDCANCEL); }};
    for (const auto& way : leave) {
        bool left = false;
        open([&] {
            const QPointer<QWidget> shown = &dialog();
            click(1026);
            click(1027);
            way();
            left = shown == nullptr || !shown->isVisible();
        });
        EXPECT_TRUE(left);
        EXPECT_EQ(asItWas, stored(*module));
        EXPECT_EQ(0, changed.flag);
    }
}

// The message says which field, and the field has the focus afterwards, ready to be overwritten.
TEST_P(DialogWindowTest, NamesTheFieldThatFailedAndGoesThere) {
    const std::string asItWas = storedAs(iterating());
    applySettings(iterating(), *module);
    QString field, message, selected;
    int focusAfter = 0;
    open([&] {
        pressAlt(GetParam().iterations);
        type("1,5");
        const Person reader([&] {
            field = dynamic_cast<const QMessageBox&>(dialog()).text();
            message = dynamic_cast<const QMessageBox&>(dialog()).informativeText();
            press(Qt::Key_Return);
        });
        click(IDOK);
        focusAfter = focus();
        selected = control<QLineEdit>(1031).selectedText();
    });
    EXPECT_EQ(GetParam().iterationsField, field.toStdString());
    EXPECT_NE(std::string::npos, message.toStdString().find(GetParam().complaint));
    EXPECT_EQ(1031, focusAfter);
    EXPECT_EQ(GetParam().wrongNumber, selected.toStdString());
    EXPECT_EQ(asItWas, stored(*module));
}

// A field that cannot be reached may hold what OK refuses. The message says what to choose, and the
// focus is there.
TEST_P(DialogWindowTest, LeadsToADisabledFieldThatFailed) {
    FendraSettings settings;
    settings.errorValue = -5.0;
    applySettings(settings, *module);
    QString message;
    int focusAfter = 0;
    open([&] {
        const Person reader([&] {
            message = dynamic_cast<const QMessageBox&>(dialog()).informativeText();
            press(Qt::Key_Return);
        });
        click(IDOK);
        focusAfter = focus();
    });
    EXPECT_NE(std::string::npos, message.toStdString().find(GetParam().firstChoice));
    EXPECT_EQ(1026, focusAfter);
}

// On a screen that is too small for it the dialog has scroll bars, and shows what has the focus.
TEST_P(DialogWindowTest, FitsTheScreenAtTwiceTheSize) {
    desktop.reset();
    qputenv("QT_SCALE_FACTOR", "2");
    desktop = window.windowDesktop();
    Desktop::install(desktop.get());
    std::vector<std::string> hidden;
    open([&] {
        const QRect screen = dialog().screen()->availableGeometry();
        EXPECT_TRUE(screen.contains(dialog().frameGeometry()));
        const int first = focus();
        do {
            press(Qt::Key_Tab);
            const QWidget& widget = focused();
            const QSize seen = widget.visibleRegion().boundingRect().size();
            if (seen.height() < widget.height() ||
                seen.width() < std::min(widget.width(), dialog().width() / 2)) {
                hidden.push_back(widget.objectName().toStdString());
            }
        } while (focus() != first);
    });
    qunsetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(std::vector<std::string>(), hidden);
}

static int neededWidth(const QWidget& widget) {
    const int letter = widget.fontMetrics().averageCharWidth();
    if (const auto* const frame = dynamic_cast<const QGroupBox*>(&widget)) {
        return frame->fontMetrics().horizontalAdvance(frame->title()) + 4 * letter;
    }
    return dynamic_cast<const QLineEdit*>(&widget) != nullptr ? 8 * letter
                                                              : widget.sizeHint().width();
}

// In the person's own font, and in others that every system has: bold, large, with serifs. In one
// whose letters are all equally wide the list's longest entry and its label outgrow the template.
TEST_P(DialogWindowTest, CutsNoLabelOffAndNothingOverlaps) {
    for (const QFont& font : {QApplication::font(), QFont("DejaVu Sans", 8, QFont::Bold),
                              QFont("DejaVu Sans", 16), QFont("DejaVu Serif", 11)}) {
        QApplication::setFont(font);
        std::vector<std::string> cut;
        std::size_t measured = 0;
        open([&] {
            const std::vector<QWidget*> widgets = controls();
            measured = widgets.size();
            for (const QWidget* const widget : widgets) {
                const bool apart = std::none_of(widgets.begin(), widgets.end(), [&](auto* other) {
                    return other != widget && other->parent() == widget->parent() &&
                           other->geometry().intersects(widget->geometry());
                });
                const bool hasRows = widget->property("text").isValid();
                if (!apart || widget->width() < neededWidth(*widget) ||
                    (hasRows && widget->height() < widget->fontMetrics().height()) ||
                    !widget->parentWidget()->rect().contains(widget->geometry())) {
                    cut.push_back((widget->objectName() + widget->accessibleName()).toStdString());
                }
            }
        });
        EXPECT_EQ(26U, measured);
        EXPECT_EQ(std::vector<std::string>(), cut) << font.toString().toStdString();
    }
}

// Screen readers say a name for each control, in one line, and the frame that it is in.
static bool readsWell(const QAccessibleInterface& face, const QWidget& parent) {
    const auto* const frame = dynamic_cast<const QGroupBox*>(&parent);
    const QString name = face.text(QAccessible::Name);
    return !name.isEmpty() && !name.contains('&') && !name.contains('\n') &&
           face.text(QAccessible::Description) == (frame != nullptr ? frame->title() : "");
}

TEST_P(DialogWindowTest, IsReadAloud) {
    std::set<QString> names;
    std::vector<std::string> unread;
    open([&] {
        for (QWidget* const widget : controls()) {
            if (widget->focusPolicy() == Qt::NoFocus) {
                continue;
            }
            const auto* const face = QAccessible::queryAccessibleInterface(widget);
            names.insert(face->text(QAccessible::Name));
            if (!readsWell(*face, *widget->parentWidget())) {
                unread.push_back(widget->objectName().toStdString());
            }
        }
    });
    EXPECT_EQ(std::vector<std::string>(), unread);
    EXPECT_EQ(16U, names.size());  // the error value is called like the check box in front of it
}

// Of frames, of what a person works with, and of the list.
static QStringList allLabels() {
    QStringList labels;
    for (const QGroupBox* const frame : DialogScreen::dialog().findChildren<QGroupBox*>()) {
        labels << frame->title().simplified();
    }
    for (const QWidget* const widget : DialogScreen::controls()) {
        labels << widget->accessibleName();
    }
    const auto& list = DialogScreen::control<QComboBox>(1036);
    for (int i = 0; i < list.count(); ++i) {
        labels << list.itemText(i);
    }
    return labels;
}

// Those that neither stand on the page nor are the help button's.
static QStringList unexplained(const QStringList& labels, const QString& page,
                               const char* helpButton) {
    QStringList left;
    for (const QString& label : labels) {
        if (label != helpButton && !page.contains(label)) {
            left << label;
        }
    }
    return left;
}

// Title and text of the help that is shown.
static std::pair<QString, QString> shownHelp() {
    std::pair<QString, QString> help;
    for (const auto* const browser : DialogScreen::dialog().findChildren<QTextBrowser*>()) {
        help = {browser->isVisible() ? browser->window()->windowTitle() : QString("not shown"),
                browser->toPlainText().simplified()};
    }
    return help;
}

// The page explains every setting, in the dialog's own words, and the dialog stays usable.
TEST_P(DialogWindowTest, HelpStaysOpenBesideTheDialog) {
    const std::function<void()> ways[] = {[] { click(1002); }, [] { press(Qt::Key_F1); }};
    for (const auto& askForHelp : ways) {
        std::pair<QString, QString> help;
        QStringList labels;
        Ids checkedBeside;
        open([&] {
            labels = allLabels();
            askForHelp();
            help = shownHelp();
            click(1026);
            checkedBeside = checked();
        });
        EXPECT_EQ(GetParam().helpTitle, help.first.toStdString());
        EXPECT_EQ("",
                  unexplained(labels, help.second, GetParam().helpButton).join(", ").toStdString());
        EXPECT_EQ((Ids{1040, 1026, 1024, 1033}), checkedBeside);
    }
}

// Brackets and star are a mark of Qt's, and here part of a file's name.
TEST_P(DialogWindowTest, TitleNamesWhatIsEdited) {
    QString title;
    open([&] { title = dialog().windowHandle()->title(); });
    EXPECT_EQ("Fendra - lines[*].graph", title.toStdString());
}

// Where no window can be opened, one line says so: before Qt starts, or as it gives up.
// NOLINTNEXTLINE(readability-function-cognitive-complexity): that of EXPECT_EXIT.
TEST(DisplayTest, MissingIsSaidInOneLine) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        qunsetenv(variable);
    }
    const WindowLibrary window;
    EXPECT_THROW((void)window.windowDesktop(), Failure);
    qputenv("DISPLAY", ":4711");
    EXPECT_EXIT(
        (void)window.windowDesktop(), testing::ExitedWithCode(1),
        "^fendra: no window can be opened \\(.*\\); check the display, .*see fendra --help\n$");
}
