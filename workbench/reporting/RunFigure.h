#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/jobs/RunRecord.h"
#include "workbench/reporting/graphs.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// A figure of results of one signal and one kernel, put together result by result.
class RunFigure {
public:
    // rate: of signals that have none, in Hz; 0: not known.
    RunFigure(std::shared_ptr<const Signal> measured, std::shared_ptr<const Signal> kernelSignal,
              double rate, int mostChannels);

    // Adds the channels of a result, as far as they are shown, with the residual of a deconvolution
    // that ran on the whole signal. Its name stands in the legends.
    void add(const Signal& result, const RunRecord& record, const std::string& name);
    // A signal that is known, beside the results.
    void addKnown(const Signal& known);

    // All of it, with the curve of a choice and its caption. record: of the run, or null.
    [[nodiscard]] Figure figure(const RunRecord* record);

private:
    void addSignals();
    void addResidual(std::vector<double> result, const RunRecord& record, int channel,
                     const std::string& name);
    void addNoise();
    [[nodiscard]] std::vector<std::string> notes() const;

    std::shared_ptr<const Signal> signal, kernel;
    SampleAxis axis, kernelAxis;
    Pane samples, residual, kernelPane, spectra;
    int most;              // channels that are shown
    int results = 0;       // that were added, channel by channel
    int channels;          // that there are
    bool divides = false;  // there is a deconvolution
    double noise = 0.0;    // of a sample of the signal; 0: not known
};
