#pragma once

#include "workbench/window/WorkOption.h"

#include <QCoreApplication>
#include <QScrollArea>

#include <functional>
#include <vector>

class OptionRow;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QVBoxLayout;

// What is set in the window: both files, what is done with them, and its options.
class WorkControls : public QScrollArea {
    Q_DECLARE_TR_FUNCTIONS(WorkControls)

public:
    // What a person has done.
    struct Heard {
        std::function<void()> changed, opensSignal, opensKernel;
    };

    explicit WorkControls(Heard whoHears);

    [[nodiscard]] WorkState state() const;
    // Shows a state, without a signal.
    void setState(const WorkState& state);
    // Shows what a run has chosen where that was left to the data.
    void showFound(const RunRecord& record);

private:
    void addFiles(QVBoxLayout& layout);
    void addOptions(QVBoxLayout& layout);
    QLineEdit* addFile(QFormLayout& form, const QString& label, const QString& name,
                       std::function<void()> opens);
    void showApplying();
    void tell();

    const Heard heard;
    QLineEdit *signalField, *kernelField, *otherField;
    QComboBox* command;
    std::vector<OptionRow*> rows;
};
