#pragma once

#include <QGroupBox>

// A frame with its title in the line, where dialog templates expect it: styles of today put the
// title above a box of its own, which would push the box down onto the first row.
class TitledFrame : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};
