#include "workbench/window/WorkControls.h"

#include "workbench/methods/Setting.h"
#include "workbench/window/OptionRow.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

WorkControls::WorkControls(Heard whoHears) : heard(std::move(whoHears)) {
    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    addFiles(*layout);
    addOptions(*layout);
    layout->addStretch();
    setWidget(content);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumWidth(content->sizeHint().width() + 20);
    setFocusPolicy(Qt::NoFocus);
    setState({});
}

QLineEdit* WorkControls::addFile(QFormLayout& form, const QString& label, const QString& name,
                                 std::function<void()> opens) {
    auto* const row = new QHBoxLayout;
    auto* const field = new QLineEdit;
    field->setObjectName(name);
    QString plain = label;
    field->setAccessibleName(plain.remove('&'));
    auto* const button = new QPushButton(tr("Open..."));
    button->setObjectName(name + "-open");
    button->setAccessibleName(tr("%1: open a file").arg(plain));
    row->addWidget(field, 1);
    row->addWidget(button);
    auto* const text = new QLabel(label);
    text->setBuddy(field);
    form.addRow(text, row);
    connect(button, &QPushButton::clicked, this, std::move(opens));
    connect(field, &QLineEdit::editingFinished, this, [this, field] {
        if (field->isModified()) {
            field->setModified(false);
            heard.changed();
        }
    });
    return field;
}

void WorkControls::addFiles(QVBoxLayout& layout) {
    auto* const group = new QGroupBox(tr("Files"));
    auto* const form = new QFormLayout(group);
    signalField = addFile(*form, tr("Si&gnal"), "signal", heard.opensSignal);
    kernelField = addFile(*form, tr("Kerne&l"), "kernel", heard.opensKernel);
    layout.addWidget(group);
}

void WorkControls::addOptions(QVBoxLayout& layout) {
    auto* const group = new QGroupBox(tr("Work"));
    auto* const column = new QVBoxLayout(group);
    command = new QComboBox;
    command->setObjectName("command");
    command->setAccessibleName(tr("What is done"));
    command->addItem(tr("Deconvolve: remove the kernel"), "deconvolve");
    command->addItem(tr("Convolve with the kernel"), "convolve");
    connect(command, &QComboBox::activated, this, [this] { tell(); });
    column->addWidget(command);
    for (const WorkOption& option : WorkOption::all()) {
        column->addWidget(rows.emplace_back(new OptionRow(option, [this] { tell(); })));
    }
    otherField = new QLineEdit;
    otherField->setObjectName("other");
    otherField->setAccessibleName(tr("Other options"));
    otherField->setPlaceholderText(tr("other options, as --columns 2"));
    otherField->setToolTip(
        tr("Any further options of the command line: columns and axis of text, rate, blocks"));
    connect(otherField, &QLineEdit::editingFinished, this, [this] {
        if (otherField->isModified()) {
            otherField->setModified(false);
            heard.changed();
        }
    });
    column->addWidget(otherField);
    layout.addWidget(group);
}

WorkState WorkControls::state() const {
    WorkState state;
    state.command = command->currentData().toString().toStdString();
    state.signal = signalField->text().toStdString();
    state.kernel = kernelField->text().toStdString();
    for (const OptionRow* const row : rows) {
        state.values[row->option.key] = row->value();
    }
    state.other = otherField->text().toStdString();
    return state;
}

void WorkControls::setState(const WorkState& state) {
    command->setCurrentIndex(command->findData(QString::fromStdString(state.command)));
    signalField->setText(QString::fromStdString(state.signal));
    kernelField->setText(QString::fromStdString(state.kernel));
    for (OptionRow* const row : rows) {
        row->setValue(state.value(row->option));
    }
    otherField->setText(QString::fromStdString(state.other));
    showApplying();
}

void WorkControls::tell() {
    showApplying();
    heard.changed();
}

void WorkControls::showApplying() {
    const WorkState now = state();
    for (OptionRow* const row : rows) {
        row->setVisible(now.applies(row->option));
    }
}

// Only where a value is left to the data: what was given stays as it was given.
void WorkControls::showFound(const RunRecord& record) {
    const WorkState now = state();
    for (OptionRow* const row : rows) {
        const std::string& key = row->option.key;
        if (now.value(row->option) != "auto") {
            continue;
        }
        for (const Setting* setting : Setting::applyingTo(record.settings)) {
            if (setting->key == key) {
                row->setFound(setting->word(record.settings));
            }
        }
        if (key == "strength" && record.choice && record.choice->strength) {
            row->setFound(QString::number(*record.choice->strength, 'g', 4).toStdString());
        }
        if (key == "oversample" && record.choice && record.choice->oversampling) {
            row->setFound(std::to_string(*record.choice->oversampling));
        }
        if (key == "noise" && record.choice && record.choice->noise > 0.0) {
            row->setFound(QString::number(record.choice->noise, 'g', 4).toStdString());
        }
    }
}
