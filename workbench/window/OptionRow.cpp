#include "workbench/window/OptionRow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <utility>

OptionRow::OptionRow(WorkOption shownOption, std::function<void()> onChange)
    : option(std::move(shownOption)),
      changed(std::move(onChange)),
      label(new QLabel(option.label(), this)) {
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    QWidget* const editor = makeEditor();
    QString name = option.label();
    name.remove('&');
    if (box == nullptr) {
        label->setBuddy(editor);
        label->setMinimumWidth(fontMetrics().averageCharWidth() * 16);
        layout->addWidget(label);
    } else {
        label->hide();
        box->setText(option.label());
    }
    layout->addWidget(editor, 1);
    editor->setAccessibleName(name);
    editor->setAccessibleDescription(option.about());
    editor->setObjectName(QString::fromStdString(option.key));
    setToolTip(option.about());
    if (option.takesAuto) {
        automatic = new QCheckBox(tr("auto"), this);
        automatic->setObjectName(QString::fromStdString(option.key + "-auto"));
        automatic->setAccessibleName(tr("%1: automatic").arg(name));
        automatic->setAccessibleDescription(tr("Leave it to the data"));
        layout->addWidget(automatic);
        connect(automatic, &QCheckBox::clicked, this, [this] { tell(); });
    }
    setValue(option.byDefault);
}

QWidget* OptionRow::makeEditor() {
    if (option.kind == WorkOption::Kind::flag) {
        box = new QCheckBox(this);
        connect(box, &QCheckBox::clicked, this, [this] { tell(); });
        return box;
    }
    const bool free = option.kind != WorkOption::Kind::choice;
    if (free && option.words.empty()) {
        field = new QLineEdit(this);
        if (option.kind == WorkOption::Kind::range) {
            field->setPlaceholderText(tr("FROM:TO"));
        }
        connect(field, &QLineEdit::editingFinished, this, [this] {
            if (field->isModified()) {
                field->setModified(false);
                tell();
            }
        });
        return field;
    }
    list = new QComboBox(this);
    list->setEditable(free);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const std::string& word : option.words) {
        list->addItem(WorkOption::wordFor(word), QString::fromStdString(word));
    }
    connect(list, &QComboBox::activated, this, [this] { tell(); });
    if (free) {
        connect(list->lineEdit(), &QLineEdit::editingFinished, this, [this] {
            if (list->lineEdit()->isModified()) {
                list->lineEdit()->setModified(false);
                tell();
            }
        });
    }
    return list;
}

void OptionRow::tell() {
    if (automatic != nullptr) {
        QWidget* const editor = list != nullptr ? static_cast<QWidget*>(list) : field;
        editor->setEnabled(!automatic->isChecked());
    }
    changed();
}

std::string OptionRow::value() const {
    if (automatic != nullptr && automatic->isChecked()) {
        return option.byDefault.empty() ? "" : "auto";
    }
    if (box != nullptr) {
        return box->isChecked() ? "on" : "";
    }
    if (field != nullptr) {
        return field->text().trimmed().toStdString();
    }
    const QString text = list->currentText().trimmed();
    const int known = list->findText(text);
    return (known >= 0 ? list->itemData(known).toString() : text).toStdString();
}

void OptionRow::setValue(const std::string& value) {
    const bool left = automatic != nullptr && (value == "auto" || value.empty());
    if (automatic != nullptr) {
        automatic->setChecked(left);
        (list != nullptr ? static_cast<QWidget*>(list) : field)->setEnabled(!left);
    }
    if (box != nullptr) {
        box->setChecked(!value.empty());
    } else {
        setFound(left ? "" : value);
    }
}

void OptionRow::setFound(const std::string& found) {
    const QString word = QString::fromStdString(found);
    if (field != nullptr) {
        field->setText(word);
    } else if (list != nullptr) {
        list->setCurrentIndex(list->findData(word));
        if (list->currentIndex() < 0 && list->isEditable()) {
            list->setEditText(word);
        }
    }
}
