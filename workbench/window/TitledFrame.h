#pragma once

#include <QGroupBox>

// A frame with its title in the line, where dialog templates expect it: present styles put the
// title above the box, which would push the box down onto the first row.
class TitledFrame : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};
