#include "workbench/window/DialogWindow.h"

#include "workbench/window/ControlWidgets.h"
#include "workbench/window/DialogUnits.h"
#include "workbench/window/text.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

static QString titleOf(const CDialog& dialog, QString subject) {
    const QString title = QString::fromUtf8(dialog.resource().title);
    // Doubled, since Qt puts a mark of its own in the place of a single one.
    subject.replace("[*]", "[*][*]");
    return subject.isEmpty() ? title : title + " - " + subject;
}

DialogWindow::DialogWindow(CDialog& shownDialog, const QString& subject, QWidget* parent)
    : QDialog(parent), dialog(shownDialog) {
    setWindowTitle(titleOf(dialog, subject));
    addContent();
    addControls();
    linkControls();
    refresh();
    focusFirst();
}

// A frame through which the controls are seen: all of them, unless the screen is too small.
void DialogWindow::addContent() {
    const DialogUnits units(dialog.resource());
    setFont(units.font());
    view = new QScrollArea(this);
    content = new QWidget;
    content->setFixedSize(
        units.toPixels({0, 0, dialog.resource().width, dialog.resource().height}).size());
    view->setWidget(content);
    view->setFrameShape(QFrame::NoFrame);
    view->setFocusPolicy(Qt::NoFocus);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view);
    setFixedSize(content->size());
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*before*/, QWidget* now) {
        if (now != nullptr && content->isAncestorOf(now)) {
            view->ensureWidgetVisible(now);
        }
    });
}

void DialogWindow::fitInto(const QSize& available) {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view);
    const int border = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, this);
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    // What the window manager draws around a window is not known before the window is shown.
    const QSize room = available - QSize(2 * border, titleBar + border);
    if (content->size() == content->size().boundedTo(room)) {
        return;
    }
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setFixedSize((content->size() + QSize(bar, bar)).boundedTo(room));
}

static QRect place(const ControlResource& resource) {
    return {resource.x, resource.y, resource.width, resource.height};
}

// The group, made where there is none yet, with the radio in it.
static QButtonGroup* withRadio(QButtonGroup* group, QAbstractButton* radio, QWidget* owner) {
    if (group == nullptr) {
        group = new QButtonGroup(owner);
    }
    group->addButton(radio);
    return group;
}

// Controls within a frame become its children: a screen reader says which frame they are in.
void DialogWindow::addControls() {
    const DialogUnits units(dialog.resource());
    QGroupBox* frame = nullptr;
    const ControlResource* frameResource = nullptr;
    QButtonGroup* group = nullptr;
    for (const DialogControl& control : dialog.controls()) {
        const ControlResource& resource = *control.resource;
        const bool framed = frame != nullptr && place(*frameResource).contains(place(resource));
        QWidget* const parent = framed ? static_cast<QWidget*>(frame) : content;
        QWidget* const widget = makeWidget(control, parent);
        const QPoint origin = framed ? frame->pos() : QPoint();
        widget->setGeometry(units.toPixels(place(resource)).translated(-origin));
        if (framed) {
            widget->setAccessibleDescription(frame->title());
        }
        if (resource.startsGroup) {
            group = nullptr;
        }
        if (resource.kind == ControlKind::radio) {
            group = withRadio(group, static_cast<QAbstractButton*>(widget), this);
        }
        if (resource.kind == ControlKind::frame) {
            frame = static_cast<QGroupBox*>(widget);
            frameResource = &resource;
        }
        if (resource.kind == ControlKind::helpButton) {
            auto* const key = new QShortcut(QKeySequence(Qt::Key_F1), this);
            connect(key, &QShortcut::activated, this, [this, id = resource.id] { click(id); });
        }
        connectControl(control, widget);
        widgets.push_back(widget);
    }
}

// What a person does, and nothing that the program sets.
void DialogWindow::connectControl(const DialogControl& control, QWidget* widget) {
    const unsigned id = control.resource->id;
    widget->setObjectName(QString::number(id));
    widget->installEventFilter(this);
    switch (control.resource->kind) {
        case ControlKind::radio:
        case ControlKind::checkBox:
        case ControlKind::defaultButton:
        case ControlKind::helpButton:
        case ControlKind::button:
            connect(static_cast<QAbstractButton*>(widget), &QAbstractButton::clicked, this,
                    [this, id] { click(id); });
            break;
        case ControlKind::edit:
            connect(static_cast<QLineEdit*>(widget), &QLineEdit::textEdited, this,
                    [this, id](const QString& text) {
                        perform([&] { dialog.type(id, fromQt(text)); });
                    });
            break;
        case ControlKind::dropDown:
            connect(static_cast<QComboBox*>(widget), &QComboBox::activated, this,
                    [this, id](int position) { perform([&] { dialog.select(id, position); }); });
            break;
        default:
            break;
    }
}

// Tab order, the mnemonics of labels, and names: what has no text of its own is named after the
// control before it.
void DialogWindow::linkControls() {
    QWidget* last = nullptr;
    QLabel* label = nullptr;
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        const ControlKind kind = dialog.controls()[i].resource->kind;
        if (kind == ControlKind::label) {
            label = static_cast<QLabel*>(widgets[i]);
        }
        if (!takesFocus(kind)) {
            continue;
        }
        if (label != nullptr) {
            std::exchange(label, nullptr)->setBuddy(widgets[i]);
        }
        if (last != nullptr) {
            setTabOrder(last, widgets[i]);
        }
        last = widgets[i];
        const bool unlabelled = kind == ControlKind::edit || kind == ControlKind::dropDown;
        nameAfter(dialog.controls()[unlabelled && i > 0 ? i - 1 : i], *widgets[i]);
    }
}

void DialogWindow::run() {
    exec();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void DialogWindow::reject() {
    perform([this] { dialog.cancel(); });
}

// A mnemonic clicks at once. Qt would show the button pressed for a while first, and what the click
// enables would not hear the keys that follow.
bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
    auto* const button = dynamic_cast<QAbstractButton*>(watched);
    if (event->type() != QEvent::Shortcut || button == nullptr) {
        return QDialog::eventFilter(watched, event);
    }
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
}

// No exception may pass through Qt: what the action throws ends the window.
void DialogWindow::perform(const std::function<void()>& action) {
    try {
        action();
        refresh();
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure || dialog.hasEnded()) {
        done(dialog.answer());
    }
}

void DialogWindow::click(unsigned id) {
    perform([&] { dialog.click(id); });
    if (id == IDOK && !dialog.hasEnded()) {
        focusFailed();
    }
}

// The Tab key stops once in a group, at the radio that is checked; Qt would stop where the focus
// was last.
static void stopAtChecked(const QButtonGroup& group) {
    const QAbstractButton* const checked = group.checkedButton();
    for (QAbstractButton* const radio : group.buttons()) {
        const bool stops = checked == nullptr || radio == checked;
        radio->setFocusPolicy(stops ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void DialogWindow::refresh() {
    for (std::size_t i = 0; i < widgets.size(); ++i) {
        showState(dialog.controls()[i], *widgets[i]);
    }
    for (const QButtonGroup* const group : findChildren<QButtonGroup*>()) {
        stopAtChecked(*group);
    }
}

// The first control that the Tab key stops at; of a radio group that is the one checked.
void DialogWindow::focusFirst() {
    for (QWidget* const widget : widgets) {
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0) {
            widget->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QWidget* DialogWindow::widgetOf(unsigned id) const {
    return id != 0 ? findChild<QWidget*>(QString::number(id)) : nullptr;
}

QString DialogWindow::failedField() const {
    const QWidget* const widget = widgetOf(dialog.failedControl());
    return widget != nullptr ? widget->accessibleName() : QString();
}

void DialogWindow::focusFailed() {
    QWidget* const widget = widgetOf(dialog.focusAfterFailure());
    if (widget == nullptr) {
        return;
    }
    widget->setFocus(Qt::OtherFocusReason);
    if (auto* const edit = dynamic_cast<QLineEdit*>(widget)) {
        edit->selectAll();
    }
}
