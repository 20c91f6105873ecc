#include "tests/support/Npy.h"
#include "tests/window/WorkScreen.h"

#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QTableWidget>
#include <QWheelEvent>

#include <cmath>
#include <cstdlib>
#include <map>
#include <numeric>
#include <sstream>

static const std::string samples = FENDRA_SAMPLES;

static std::string npyOf(const std::vector<double>& values) {
    return npy("'<f8'", std::string("(").append(std::to_string(values.size())) + ",)",
               {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(double)});
}

// A person who answers the modal window that comes up next.
static void answerNext(std::function<void(QWidget&)> answer) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [=, given = std::move(answer)] {
        if (QWidget* const modal = QApplication::activeModalWidget()) {
            timer->deleteLater();
            timer->stop();
            given(*modal);
        }
    });
    timer->start(5);
}

static void nameFile(const std::string& path) {
    answerNext([path](QWidget& dialog) {
        auto& field = *dialog.findChild<QLineEdit*>("fileNameEdit");
        field.setText(QString::fromStdString(path));
        QTest::keyClick(&field, Qt::Key_Return);
    });
}

static bool press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&widget, static_cast<Qt::Key>(key), modifiers);
    return true;
}

static bool pressInWindow(int key, Qt::KeyboardModifiers modifiers = {}) {
    WorkScreen::window().activateWindow();  // after a dialog
    EXPECT_TRUE(QTest::qWaitForWindowActive(&WorkScreen::window()));
    return press(WorkScreen::window(), key, modifiers);
}

static bool hasAnswer(const char* words) {
    return WorkScreen::idle() && WorkScreen::summary().contains(words);
}

// What the program itself prints, and its status.
static int runProgram(const std::string& line) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    return std::system((program.parent_path().string() + "/" + line + " > /dev/null 2>&1").c_str());
}

// Bytes and digest are those of the command line that the window shows.
TEST(WorkWindow, SavesWhatTheShownCommandLineWrites) {
    WorkScreen screen;
    const std::string saved = screen.folder.path("lines.csv");
    std::string line;
    EXPECT_EQ(0, screen.visit(samples + "/xrf-spectrum.csv", samples + "/xrf-zero-peak.csv",
                              {[] { return hasAnswer("15 steps"); },
                               [] { return WorkScreen::uncheck("method-auto"); },
                               [] { return WorkScreen::choose("method", "van-cittert"); },
                               [] {
                                   return WorkScreen::uncheck("max-iterations-auto") ||
                                          WorkScreen::control("max-iterations").isEnabled();
                               },
                               [] { return WorkScreen::type("max-iterations", "9"); },
                               [] { return hasAnswer("number of loop steps 9"); },
                               [&] {
                                   line = WorkScreen::commandLine();
                                   nameFile(saved);
                                   return pressInWindow('S', Qt::ControlModifier);
                               },
                               [] { return WorkScreen::readout().startsWith("Saved"); }}));
    EXPECT_NE(std::string::npos, line.find("--method van-cittert --max-iterations 9")) << line;
    const std::string bytes = screen.folder.read("lines.csv");
    ASSERT_FALSE(bytes.empty());
    std::filesystem::remove(saved);
    ASSERT_EQ(0, runProgram(line.substr(line.find("fendra")) + " -o " + saved));
    EXPECT_EQ(screen.folder.read("lines.csv"), bytes);
}

TEST(WorkWindow, TakesTheCountThatIsClickedOnTheCurve) {
    WorkScreen screen;
    screen.visit(
        samples + "/xrf-spectrum.csv", samples + "/xrf-zero-peak.csv",
        {[] { return hasAnswer("15 steps"); },
         [] {
             QWidget& plot = WorkScreen::control("plot");
             plot.setFocus();
             for (int i = 0; i < 4; ++i) {
                 press(plot, Qt::Key_PageDown);
             }
             // To the first point of the curve, and two further.
             for (int i = 0; i < 2000 && !WorkScreen::readout().startsWith("steps 1 "); ++i) {
                 press(plot, Qt::Key_Left, Qt::ShiftModifier);
             }
             press(plot, Qt::Key_Right, Qt::ShiftModifier);
             EXPECT_TRUE(WorkScreen::readout().startsWith("steps 2 "))
                 << WorkScreen::readout().toStdString();
             return press(plot, Qt::Key_Return);
         },
         [] { return hasAnswer("number of loop steps 3"); },
         [] {
             EXPECT_NE(std::string::npos, WorkScreen::commandLine().find("--max-iterations 3"));
             return true;
         }});
}

// A step of it takes a second and more; the stop is heard within it.
TEST(WorkWindow, StopsALongRunAndGoesOn) {
    WorkScreen screen;
    std::vector<double> noise(150000), kernel(noise.size());
    for (std::size_t i = 0; i < noise.size(); ++i) {
        noise[i] = std::sin(0.37 * static_cast<double>(i * i % 1009));
        kernel[i] = i < 9 ? 1.0 / 9 : 0.0;
    }
    const std::string signal = screen.folder.write("noise.npy", npyOf(noise));
    const std::string boxes = screen.folder.write("box.npy", npyOf(kernel));
    std::chrono::steady_clock::time_point stopped;
    screen.visit(signal, boxes,
                 {[] { return !WorkScreen::idle() || !WorkScreen::summary().isEmpty(); },
                  [] { return WorkScreen::uncheck("method-auto"); },
                  [] { return WorkScreen::choose("method", "van-cittert"); },
                  [] { return !WorkScreen::idle(); },
                  [] {
                      QTest::qWait(400);
                      return true;
                  },
                  [&] {
                      stopped = std::chrono::steady_clock::now();
                      return pressInWindow(Qt::Key_Escape);
                  },
                  [&] { return WorkScreen::idle(); },
                  [&] {
                      EXPECT_LT(std::chrono::steady_clock::now() - stopped,
                                std::chrono::milliseconds(500));
                      return WorkScreen::choose("method", "spectral");
                  },
                  [] { return hasAnswer("spectral"); }});
}

// What is saved is what the command line gives that the window then shows: it ends there by itself.
TEST(WorkWindow, KeepsTheEstimateOfAnIterationThatWasStopped) {
    WorkScreen screen;
    std::vector<double> wave(20000), box(wave.size());
    for (std::size_t i = 0; i < wave.size(); ++i) {
        wave[i] = std::sin(1e-6 * static_cast<double>(i * i)) +
                  0.3 * std::cos(0.01 * static_cast<double>(i));
        box[i] = i < 4 ? 0.25 : 0.0;
    }
    const std::string signal = screen.folder.write("wave.npy", npyOf(wave));
    const std::string kernel = screen.folder.write("box.npy", npyOf(box));
    const std::string saved = screen.folder.path("kept.csv");
    std::string line;
    screen.visit(
        signal, kernel,
        {[] { return WorkScreen::idle() && !WorkScreen::summary().isEmpty(); },
         [] { return WorkScreen::uncheck("method-auto"); },
         [] {
             return WorkScreen::uncheck("max-iterations-auto") ||
                    WorkScreen::control("max-iterations").isEnabled();
         },
         [] { return WorkScreen::type("max-iterations", "100000"); },
         [] { return WorkScreen::choose("method", "van-cittert"); },
         [] {
             return WorkScreen::control<QProgressBar>("progress").format().contains("step 3 ") ||
                    WorkScreen::control<QProgressBar>("progress").format().contains("step 4 ");
         },
         [] { return pressInWindow(Qt::Key_Escape); }, [] { return hasAnswer("stopped after"); },
         [&] {
             line = WorkScreen::commandLine();
             nameFile(saved);
             return pressInWindow('S', Qt::ControlModifier);
         },
         [] { return WorkScreen::readout().startsWith("Saved"); }});
    const std::string bytes = screen.folder.read("kept.csv");
    ASSERT_FALSE(bytes.empty());
    std::filesystem::remove(saved);
    ASSERT_EQ(0, runProgram(line + " -o " + saved));
    const auto samplesOf = [](const std::string& text) {  // without the comments
        std::istringstream lines(text);
        std::string all;
        for (std::string row; std::getline(lines, row);) {
            all += row.starts_with("#") ? "" : row + "\n";
        }
        return all;
    };
    EXPECT_EQ(samplesOf(screen.folder.read("kept.csv")), samplesOf(bytes));
}

TEST(WorkWindow, SaysWhatFailsAndKeepsTheResult) {
    WorkScreen screen;
    const std::string zero = screen.folder.write("zero.csv", "0\n0\n0\n0\n");
    const std::string gone = screen.folder.write("gone.csv", "1\n2\n3\n2\n");
    std::vector<QString> told;
    const auto hears = [](const char* part) {
        return WorkScreen::idle() && WorkScreen::message().contains(part);
    };
    screen.visit(gone, gone,
                 {[] { return hasAnswer("4 samples"); },
                  [&] { return WorkScreen::type("kernel", zero.c_str()); },
                  [&] { return hears("zero.csv"); },
                  [&] { return WorkScreen::type("kernel", (samples + "/README.md").c_str()); },
                  [&] { return hears("README.md"); },
                  [&] { return WorkScreen::type("kernel", gone.c_str()); },
                  [&] { return hasAnswer("4 samples") && WorkScreen::message().isEmpty(); },
                  [&] {  // a disk that is full
                      answerNext([&told](QWidget& dialog) {
                          auto& field = *dialog.findChild<QLineEdit*>("fileNameEdit");
                          field.setText("/dev/full");
                          answerNext([&told](QWidget& next) {
                              const auto take = [&told](QWidget& box) {
                                  told.push_back(dynamic_cast<QMessageBox&>(box).text());
                                  press(box, Qt::Key_Return);
                              };
                              if (dynamic_cast<QFileDialog*>(next.parentWidget()) != nullptr) {
                                  press(*dynamic_cast<QMessageBox&>(next).button(QMessageBox::Yes),
                                        Qt::Key_Space);
                                  answerNext(take);
                              } else {
                                  take(next);
                              }
                          });
                          QTest::keyClick(&field, Qt::Key_Return);
                      });
                      return pressInWindow('S', Qt::ControlModifier);
                  },
                  [&] { return !told.empty(); },
                  [&] {
                      std::filesystem::remove(gone);
                      return pressInWindow(Qt::Key_F5);
                  },
                  [&] { return hears("gone.csv"); },
                  [&] { return WorkScreen::summary().contains("4 samples"); }});
    ASSERT_EQ(1U, told.size());
    EXPECT_TRUE(told[0].contains("/dev/full")) << told[0].toStdString();
}

// The number that follows a word of the readout.
static double valueIn(const QString& readout, const QString& word) {
    const QString rest = readout.mid(readout.indexOf(word) + word.size()).trimmed();
    return rest.section(' ', 0, 0).remove(',').toDouble();
}

// Where the cursor is once the pointer is there.
static double xAt(QPoint point) {
    QWidget& plot = WorkScreen::control("plot");
    QTest::mouseMove(&plot, point + QPoint(1, 0));
    QTest::mouseMove(&plot, point);
    return valueIn(WorkScreen::readout(), "sample");
}

static void drag(Qt::MouseButton button, QPoint from, QPoint to) {
    QWidget& plot = WorkScreen::control("plot");
    QTest::mousePress(&plot, button, {}, from);
    QTest::mouseMove(&plot, to);
    QTest::mouseRelease(&plot, button, {}, to);
}

static void zoomIntoBox(const QWidget& plot, QPoint from, QPoint to) {
    const double left = xAt(from), right = xAt(to);
    drag(Qt::RightButton, from, to + QPoint(0, 40));
    const double middle = xAt({plot.width() / 2, 120});
    EXPECT_GT(middle, left);
    EXPECT_LT(middle, right);
}

// What is under the pointer stays there when the wheel turns, and moves with it when it drags.
static void zoomAndPan(QWidget& plot) {
    const QPoint at(plot.width() / 3, 120), far = at + QPoint(200, 0);
    const double before = xAt(at), size = xAt(far) - before, pixel = size / 200;
    QWheelEvent wheel(at, plot.mapToGlobal(at), {}, {0, 480}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&plot, &wheel);
    EXPECT_NEAR(before, xAt(at), pixel + 1.0);  // and the nearest sample
    EXPECT_NEAR(before + size * std::pow(0.85, 4), xAt(far), 2 * pixel);

    const double zoomed = xAt(at);
    drag(Qt::LeftButton, at, at + QPoint(50, 0));
    EXPECT_NEAR(zoomed, xAt(at + QPoint(50, 0)), 2 * pixel);

    zoomIntoBox(plot, at, far);
    QTest::mouseDClick(&plot, Qt::LeftButton, {}, at);
    EXPECT_FALSE(WorkScreen::readout().contains("from the mark"));
    EXPECT_NEAR(before, xAt(at), pixel + 1.0);  // and the nearest sample
}

// Mark, difference, and zoom into the stretch between.
static void markByKeys(QWidget& plot) {
    plot.setFocus();
    xAt({plot.width() / 2, 120});
    press(plot, 'M');
    for (int i = 0; i < 5; ++i) {
        press(plot, Qt::Key_Right, Qt::ShiftModifier);
    }
    const double difference = valueIn(WorkScreen::readout(), "from the mark");
    EXPECT_GT(difference, 0.0);
    EXPECT_TRUE(plot.accessibleDescription().contains("from the mark"));
    const double value = valueIn(WorkScreen::readout(), "sample");
    press(plot, 'B');
    QTest::mouseMove(&plot, {plot.width() / 2, 121});
    const double centre = valueIn(WorkScreen::readout(), "sample");
    EXPECT_GT(centre, value - difference);
    EXPECT_LT(centre, value);
    press(plot, Qt::Key_Home);
}

TEST(WorkWindow, ZoomsAndPansAtThePointer) {
    WorkScreen screen;
    std::vector<double> ramp(100000);
    std::iota(ramp.begin(), ramp.end(), 0.0);
    screen.visit(screen.folder.write("ramp.npy", npyOf(ramp)), "",
                 {[] {
                      return xAt({WorkScreen::control("plot").width() / 2, 120}) > 0.0;
                  },
                  [] {
                      zoomAndPan(WorkScreen::control("plot"));
                      markByKeys(WorkScreen::control("plot"));
                      return true;
                  }});
}

TEST(WorkWindow, TakesDroppedFilesNoiseFromAStretchAndCompares) {
    WorkScreen screen;
    screen.visit(
        "", "",
        {[] { return WorkScreen::window().isVisible(); },
         [] {
             QMimeData dropped;
             dropped.setUrls(
                 {QUrl::fromLocalFile(QString::fromStdString(samples) + "/xrf-spectrum.csv"),
                  QUrl::fromLocalFile(QString::fromStdString(samples) + "/xrf-zero-peak.csv")});
             QDragEnterEvent enter({10, 10}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
             QApplication::sendEvent(&WorkScreen::window(), &enter);
             QDropEvent drop({10, 10}, Qt::CopyAction, &dropped, Qt::LeftButton, {});
             QApplication::sendEvent(&WorkScreen::window(), &drop);
             return true;
         },
         [] { return hasAnswer("15 steps"); },
         [] {
             pressInWindow('D', Qt::ControlModifier);
             pressInWindow('N', Qt::ControlModifier);
             QWidget& plot = WorkScreen::control("plot");
             QTest::mousePress(&plot, Qt::LeftButton, {}, {plot.width() / 2, 100});
             QTest::mouseMove(&plot, {plot.width() / 2 + 60, 100});
             QTest::mouseRelease(&plot, Qt::LeftButton, {}, {plot.width() / 2 + 60, 100});
             return WorkScreen::commandLine().find("--noise-from") != std::string::npos;
         },
         [] { return WorkScreen::idle() && WorkScreen::message().isEmpty(); },
         [] {
             pressInWindow(Qt::Key_F7);
             EXPECT_TRUE(WorkScreen::readout().startsWith("A:"));
             pressInWindow(Qt::Key_F7);
             EXPECT_TRUE(WorkScreen::readout().startsWith("B:"));
             pressInWindow('C', Qt::ControlModifier | Qt::ShiftModifier);
             EXPECT_EQ(QApplication::clipboard()->text().toStdString(), WorkScreen::commandLine());
             return pressInWindow(Qt::Key_F6);
         },
         [] {
             return WorkScreen::idle() &&
                    WorkScreen::control<QTableWidget>("comparison-table").rowCount() == 4;
         },
         [&] {
             nameFile(screen.folder.path("seen.svg"));
             return pressInWindow('P', Qt::ControlModifier);
         },
         [&] { return screen.folder.read("seen.svg").find("<svg") != std::string::npos; },
         [&] {
             nameFile(screen.folder.path("kept.graph"));
             return pressInWindow('G', Qt::ControlModifier);
         },
         [&] { return !screen.folder.read("kept.graph").empty(); }});
    EXPECT_EQ(0, runProgram("fendra report " + screen.folder.path("kept.graph")));
}

namespace {

class WorkLanguages : public testing::TestWithParam<const char*> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(All, WorkLanguages, testing::Values("de_DE", "en_GB", "fr_FR"));

// What Qt itself adds is named by Qt.
static void expectName(const QWidget& widget) {
    const bool standard = QString(widget.metaObject()->className()).startsWith("QTab") ||
                          widget.objectName().startsWith("qt_");
    const bool inner = dynamic_cast<QComboBox*>(widget.parentWidget()) != nullptr;
    if (widget.focusPolicy() != Qt::NoFocus && widget.isVisible() && !standard && !inner) {
        EXPECT_FALSE(widget.accessibleName().isEmpty())
            << widget.metaObject()->className() << " " << widget.objectName().toStdString();
    }
}

static void collect(const QWidget& widget, std::map<QChar, QString>& mnemonics) {
    const auto* const label = dynamic_cast<const QLabel*>(&widget);
    const auto* const box = dynamic_cast<const QCheckBox*>(&widget);
    const QString text = !widget.isVisible()                             ? QString()
                         : label != nullptr && label->buddy() != nullptr ? label->text()
                         : box != nullptr                                ? box->text()
                                                                         : QString();
    if (const qsizetype at = text.indexOf('&'); at >= 0) {
        const QChar key = text[at + 1].toUpper();
        EXPECT_EQ(0U, mnemonics.count(key))
            << text.toStdString() << " and " << mnemonics[key].toStdString();
        mnemonics[key] = text;
    }
}

// Whoever cannot see the window hears what each thing in it is; no two mnemonics collide.
TEST_P(WorkLanguages, NamesEveryControlAndQuitsByKeys) {
    WorkScreen screen(GetParam());
    const auto checksAll = [] {
        std::map<QChar, QString> mnemonics;
        for (const QWidget* const widget : WorkScreen::window().findChildren<QWidget*>()) {
            expectName(*widget);
            collect(*widget, mnemonics);
        }
    };
    std::vector<WorkScreen::Step> steps = {[] { return WorkScreen::uncheck("method-auto"); }};
    for (const char* method : {"spectral", "van-cittert", "pseudo-inverse", "regularized"}) {
        steps.emplace_back([=] {
            EXPECT_TRUE(WorkScreen::choose("method", method));
            checksAll();
            return true;
        });
    }
    steps.emplace_back([] { return pressInWindow('Q', Qt::ControlModifier); });
    EXPECT_EQ(0, screen.visit(samples + "/speech.wav", "", steps));
}
