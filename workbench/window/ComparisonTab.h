#pragma once

#include "workbench/desktop/FoldBench.h"

#include <QCoreApplication>
#include <QWidget>

class QTableWidget;
class WorkPlot;

// All methods on the same data: their results on one another, and a table of how good they are.
class ComparisonTab : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(ComparisonTab)

public:
    // cursorMoved: as WorkPlot's.
    explicit ComparisonTab(std::function<void(const QString&)> cursorMoved);

    void show(const FoldBench::Compared& compared);

private:
    void addRow(const MethodOutcome& outcome);

    WorkPlot* plot;
    QTableWidget* table;
};
