#include "workbench/window/ComparisonTab.h"

#include "workbench/methods/Method.h"
#include "workbench/window/WorkOption.h"
#include "workbench/window/WorkPlot.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <utility>

ComparisonTab::ComparisonTab(std::function<void(const QString&)> cursorMoved)
    : plot(new WorkPlot({std::move(cursorMoved), [](std::size_t) {}, [](double, double) {}})),
      table(new QTableWidget) {
    plot->setObjectName("comparison-plot");
    plot->setAccessibleName(tr("Plot of the comparison"));
    table->setObjectName("comparison-table");
    table->setAccessibleName(tr("Table of the comparison"));
    table->setColumnCount(4);
    table->setHorizontalHeaderLabels({tr("Method"), tr("Misfit"), tr("Roughness"), tr("Remarks")});
    table->horizontalHeader()->setStretchLastSection(true);
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(plot, 3);
    layout->addWidget(table, 1);
}

void ComparisonTab::show(const FoldBench::Compared& compared) {
    plot->show(compared.figure);
    table->setRowCount(0);
    for (const MethodOutcome& outcome : compared.outcomes) {
        addRow(outcome);
    }
    table->resizeColumnsToContents();
}

void ComparisonTab::addRow(const MethodOutcome& outcome) {
    QStringList remarks;
    for (const std::string& remark : outcome.record.remarks) {
        remarks.push_back(QString::fromStdString(remark));
    }
    const bool failed = !outcome.failure.empty();
    const auto number = [&](double value) {
        return failed ? QString() : QString::number(value, 'g', 3);
    };
    const int row = table->rowCount();
    table->insertRow(row);
    int column = 0;
    for (const QString& text :
         {WorkOption::wordFor(outcome.method->word), number(outcome.misfit),
          number(outcome.roughness),
          failed ? QString::fromStdString(outcome.failure) : remarks.join("; ")}) {
        auto* const item = new QTableWidgetItem(text);
        item->setToolTip(text);
        table->setItem(row, column++, item);
    }
}
