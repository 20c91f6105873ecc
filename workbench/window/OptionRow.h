#pragma once

#include "workbench/window/WorkOption.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>
#include <string>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

// The controls of one option: a label, what takes the value, and a tick that leaves it to the data.
class OptionRow : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(OptionRow)

public:
    // onChange: what is called when a person has changed the value.
    OptionRow(WorkOption shownOption, std::function<void()> onChange);

    const WorkOption option;

    // The value as the command line takes it, "auto" where it is left to the data; empty: not
    // given.
    [[nodiscard]] std::string value() const;
    // Shows a value, without a signal.
    void setValue(const std::string& value);
    // Shows what was found for a value that is left to the data; empty: nothing.
    void setFound(const std::string& found);

private:
    QWidget* makeEditor();
    void tell();

    std::function<void()> changed;
    QLabel* label;
    QComboBox* list = nullptr;
    QLineEdit* field = nullptr;
    QCheckBox* box = nullptr;
    QCheckBox* automatic = nullptr;
};
