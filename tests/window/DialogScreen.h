#pragma once

#include "host/B_BasisModule.h"
#include "platform/DialogResource.h"
#include "workbench/desktop/WindowLibrary.h"
#include "workbench/module/ModuleLibrary.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using Ids = std::vector<int>;

// A person who waits for the next modal window, acts in it, and closes it if it is still open.
class Person : public QObject {
public:
    explicit Person(std::function<void()> action)
        : before(QApplication::activeModalWidget()), act(std::move(action)) {
        startTimer(1);
    }

protected:
    void timerEvent(QTimerEvent* event) override {
        const QPointer<QWidget> shown = QApplication::activeModalWidget();
        if (shown == before) {
            return;
        }
        killTimer(event->timerId());
        EXPECT_TRUE(QTest::qWaitForWindowActive(shown));
        act();
        if (shown != nullptr) {
            shown->close();
        }
    }

private:
    const QWidget* before;
    std::function<void()> act;
};

// The module's settings dialog in its window, on a screen that only the process sees, with the keys
// and clicks that a person makes.
class DialogScreen {
public:
    explicit DialogScreen(const char* language) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("LC_ALL", language);
        desktop = window.windowDesktop("lines[*].graph");
        Desktop::install(desktop.get());
    }
    DialogScreen(const DialogScreen&) = delete;
    DialogScreen& operator=(const DialogScreen&) = delete;
    ~DialogScreen() { Desktop::install(nullptr); }

    PORTTYPE open(const std::function<void()>& action) {
        const Person person(action);
        return module->OnLeftDblClk(changed);
    }

    static QWidget& dialog() { return *QApplication::activeModalWidget(); }

    // The widgets that stand for controls of the template; those without an id are number 0.
    static std::vector<QWidget*> controls() {
        std::vector<QWidget*> all;
        for (QWidget* const widget : dialog().findChildren<QWidget*>()) {
            bool isNumber = false;
            widget->objectName().toUInt(&isNumber);
            if (isNumber) {
                all.push_back(widget);
            }
        }
        return all;
    }
    template <typename Widget = QWidget>
    static Widget& control(int id) {
        return *dialog().findChild<Widget*>(QString::number(id));
    }

    // Ids of the radios and boxes that are checked, and of the fields that are disabled.
    static Ids checked() {
        return idsWhere([](const QWidget& widget) {
            const auto* const button = dynamic_cast<const QAbstractButton*>(&widget);
            return button != nullptr && button->isChecked();
        });
    }
    static Ids disabled() {
        return idsWhere([](const QWidget& widget) { return !widget.isEnabled(); });
    }

    static QWidget& focused() {
        QWidget* const widget = dialog().focusWidget();
        return widget != nullptr ? *widget : dialog();
    }
    static int focus() { return focused().objectName().toInt(); }

    static void press(Qt::Key key) { QTest::keyClick(&focused(), key); }
    static void pressAlt(char letter) { QTest::keyClick(&focused(), letter, Qt::AltModifier); }
    static void type(const char* text) { QTest::keyClicks(&focused(), text); }
    static void click(int id) {
        QWidget& widget = control(id);
        QTest::mouseClick(&widget, Qt::LeftButton, {}, {8, widget.height() / 2});
    }

    const WindowLibrary window;
    const ModuleLibrary library{ModuleLibrary::standardFile()};
    std::unique_ptr<Desktop> desktop;
    const ModuleObject module = library.makeModule();
    RET_PORT changed;

private:
    static Ids idsWhere(bool (*holds)(const QWidget&)) {
        Ids ids;
        for (const QWidget* const widget : controls()) {
            if (holds(*widget)) {
                ids.push_back(widget->objectName().toInt());
            }
        }
        return ids;
    }
};
