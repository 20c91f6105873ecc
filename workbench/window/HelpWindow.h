#pragma once

#include <QDialog>

// The page about the settings, in the user's language. It leaves the windows beside it usable.
class HelpWindow : public QDialog {
public:
    explicit HelpWindow(QWidget* parent);
};
