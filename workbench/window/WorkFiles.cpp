#include "workbench/figures/Picture.h"
#include "workbench/files/disk/OutputFile.h"
#include "workbench/messages/Failure.h"
#include "workbench/window/WorkPlot.h"
#include "workbench/window/WorkWindow.h"

#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QSettings>

#include <optional>

// Where the person's settings of the window lie.
static const char* const maker = "fendra";

// Pairs of files, the latest first.
void WorkWindow::addRecent() {
    recent->clear();
    const QStringList pairs = QSettings(maker, maker).value("recent").toStringList();
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2) {
        const QString &signal = pairs[i], &kernel = pairs[i + 1];
        QString text = QFileInfo(signal).fileName() + ", " + QFileInfo(kernel).fileName();
        addAction(*recent, text.replace('&', "&&"), {}, [this, signal, kernel] {
            WorkState state = controls->state();
            state.signal = signal.toStdString();
            state.kernel = kernel.toStdString();
            controls->setState(state);
            restart();
        });
    }
    recent->setEnabled(!recent->isEmpty());
}

void WorkWindow::remember() {
    constexpr qsizetype most = 8;
    const WorkState state = controls->state();
    const QStringList latest = {QFileInfo(QString::fromStdString(state.signal)).absoluteFilePath(),
                                QFileInfo(QString::fromStdString(state.kernel)).absoluteFilePath()};
    QSettings settings(maker, maker);
    QStringList pairs = settings.value("recent").toStringList();
    for (qsizetype i = 0; i + 1 < pairs.size();) {
        if (pairs.mid(i, 2) == latest) {
            pairs.remove(i, 2);
        } else {
            i += 2;
        }
    }
    settings.setValue("recent", (latest + pairs).mid(0, 2 * most));
    addRecent();
}

void WorkWindow::openSignal() {
    const QString file = QFileDialog::getOpenFileName(this, tr("Open a signal"));
    if (!file.isEmpty()) {
        open(file, false);
    }
}

void WorkWindow::openKernel() {
    const QString file = QFileDialog::getOpenFileName(this, tr("Open a kernel"));
    if (!file.isEmpty()) {
        open(file, true);
    }
}

void WorkWindow::saveResult() {
    if (answer == nullptr) {
        showMessage(tr("There is no result to save yet."));
        return;
    }
    const QString file = QFileDialog::getSaveFileName(this, tr("Save the result"), {},
                                                      tr("Signals (*.csv *.wav *.npy);;All (*)"));
    if (file.isEmpty()) {
        return;
    }
    attempt([&] {
        const std::string lost = bench.save(answerWords, *answer, file.toStdString());
        readout->setText(lost.empty() ? tr("Saved as %1").arg(file)
                                      : tr("Saved as %1, which has no place for %2")
                                            .arg(file, QString::fromStdString(lost)));
    });
}

void WorkWindow::savePicture() {
    const QString file = QFileDialog::getSaveFileName(this, tr("Save the picture"), {},
                                                      tr("Pictures (*.png *.svg *.pdf)"));
    if (file.isEmpty()) {
        return;
    }
    attempt([&] { writePicture(file); });
}

void WorkWindow::saveGraph() {
    const QString file = QFileDialog::getSaveFileName(this, tr("Save the settings as a graph"), {},
                                                      tr("Stored graphs (*.graph);;All (*)"));
    if (!file.isEmpty()) {
        attempt([&] { bench.saveGraph(settingsNow(), file.toStdString()); });
    }
}

// What is seen, by the picture's own measures: a picture is not a copy of the screen.
void WorkWindow::writePicture(const QString& file) {
    const std::optional<PictureFormat> format = pictureFormatOf(file.toStdString());
    if (!format) {
        throw Failure(tr("%1: a picture is .png, .svg or .pdf; choose another ending")
                          .arg(file)
                          .toStdString());
    }
    PictureOrder order;
    order.format = *format;
    if (const auto stretch = plot->stretch()) {
        order.from = stretch->lower;
        order.to = stretch->upper;
    }
    PaintedFigure painted;
    paintFigure(visibleFigure(), order, painted);
    OutputFile target(SourceName::ofOutput(file.toStdString()), true);
    target.write(painted.bytes);
    target.commit();
}
