#pragma once

#include "tests/support/TemporaryFolder.h"
#include "workbench/commands/CommandBench.h"
#include "workbench/desktop/WindowLibrary.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// The window in which one works, on a screen that only the process sees, and a person in front of
// it: takes one step after the other, each as soon as it can be taken, and then closes the window.
class WorkScreen {
public:
    // Whether a step was taken; else it is tried again a little later.
    using Step = std::function<bool()>;

    explicit WorkScreen(const char* language = "en_GB") {
        if (!qEnvironmentVariableIsSet("FENDRA_TEST_ON_DISPLAY")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        qputenv("LC_ALL", language);
        qputenv("XDG_CONFIG_HOME", folder.path("settings").c_str());
    }

    // Returns the status of the window.
    int visit(const std::string& signal, const std::string& kernel, std::vector<Step> taken) {
        steps = std::move(taken);
        visiting = this;
        static const bool added = [] {
            qAddPreRoutine([] { QTimer::singleShot(0, qApp, [] { visiting->next(0); }); });
            return true;
        }();
        EXPECT_TRUE(added);
        CommandBench bench("");
        return library.openWindow(bench, {signal, kernel, "light", ""});
    }

    static QMainWindow& window() {
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            if (auto* const main = dynamic_cast<QMainWindow*>(widget)) {
                return *main;
            }
        }
        throw std::runtime_error("there is no window");
    }
    template <typename Widget = QWidget>
    static Widget& control(const char* name) {
        return *window().findChild<Widget*>(name);
    }

    static std::string commandLine() {
        return control<QLineEdit>("command-line").text().toStdString();
    }
    static QString summary() { return control<QPlainTextEdit>("summary").toPlainText(); }
    static QString message() {
        const QLabel& label = control<QLabel>("message");
        return label.isVisible() ? label.text() : QString();
    }
    static QString readout() { return control<QLabel>("readout").text(); }
    // Nothing runs, and nothing is about to.
    static bool idle() { return !control("progress").isVisible(); }

    static bool uncheck(const char* name) {
        auto& box = control<QCheckBox>(name);
        QTest::mouseClick(&box, Qt::LeftButton, {}, {8, box.height() / 2});
        return !box.isChecked();
    }
    static bool choose(const char* name, const char* word) {
        auto& list = control<QComboBox>(name);
        list.setFocus();
        const int wanted = list.findData(word);
        QTest::keyClick(&list, Qt::Key_Home);
        for (int i = 0; i < wanted; ++i) {
            QTest::keyClick(&list, Qt::Key_Down);
        }
        emit list.activated(wanted);  // as the list that drops down does when it is answered
        return list.currentIndex() == wanted;
    }
    static bool type(const char* name, const char* text) {
        auto& field = control<QLineEdit>(name);
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, text);
        QTest::keyClick(&field, Qt::Key_Return);
        return true;
    }

    TemporaryFolder folder;

private:
    void next(std::size_t step) {
        const auto started = std::chrono::steady_clock::now();
        auto* const timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, qApp, [=, this]() mutable {
            if (step >= steps.size()) {
                timer->stop();
                window().close();
                return;
            }
            if (inStep) {
                return;  // the step waits in a dialog of its own
            }
            inStep = true;
            const bool done = steps[step]();
            inStep = false;
            if (done) {
                ++step;
                begun = std::chrono::steady_clock::now();
            } else if (std::chrono::steady_clock::now() - std::max(begun, started) >
                       std::chrono::seconds(20)) {
                ADD_FAILURE() << "step " << step << " could not be taken; the window says "
                              << message().toStdString() << " and " << summary().toStdString();
                step = steps.size();
            }
        });
        timer->start(5);
    }

    static inline WorkScreen* visiting = nullptr;
    const WindowLibrary library;
    std::vector<Step> steps;
    bool inStep = false;
    std::chrono::steady_clock::time_point begun{};
};
