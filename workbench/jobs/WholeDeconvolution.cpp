#include "workbench/jobs/WholeDeconvolution.h"

#include "workbench/jobs/Findings.h"
#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/StepRelay.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/messages/Failure.h"
#include "workbench/methods/Method.h"
#include "workbench/module/pairing.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <utility>

WholeDeconvolution::WholeDeconvolution(const FoldJob& foldJob, const ModuleLibrary& library,
                                       Signal measured, Signal kernelSignal, JobObserver& observer)
    : job(foldJob), signal(std::move(measured)), kernel(std::move(kernelSignal)) {
    checkPairing();
    for (int channel = 0; channel < kernel.info.channels; ++channel) {
        checkKernel(channelOf(kernel, channel), 0, kernel.info.source.shown);
    }
    Treatment treatment = job.treatment;
    treatment.room = job.cutting.pad;
    treatment.curve = job.curve.has_value();
    const bool searches =
        job.leftToData.any() || job.treatment.automatic ||
        (job.settings.method == FendraSettings::regularized && !job.treatment.strength);
    if (searches) {
        observer.chooses(secondsToChoose(signal.info.samples));
    }
    deconvolution.emplace(library, signal, kernel, job.settings, job.leftToData, treatment);
    checkMemory(method(), deconvolution->moduleLength());
    if (job.curve) {
        writeCurve();
    }
}

int WholeDeconvolution::channels() const {
    return std::max(signal.info.channels, kernel.info.channels);
}

// Prepared operands are of one length; others go to the module as they are.
void WholeDeconvolution::checkPairing() const {
    checkChannels(signal.info, kernel.info);
    const Treatment& treatment = job.treatment;
    const bool plain = !treatment.automatic && !treatment.ends && !job.cutting.pad &&
                       !treatment.frequencies && treatment.oversampling == 1;
    if (plain && Method::selectedBy(job.settings)->equalLengths) {
        checkLengths(signal.info, signal.info.samples, kernel.info, kernel.info.samples, 0);
    }
}

JobSize WholeDeconvolution::size() const {
    const auto length = static_cast<double>(deconvolution->moduleLength());
    JobSize size = sizeOfRun(method(), deconvolution->choice().settings, length, length);
    size.multiplyAdds *= channels() * passes();
    size.seconds *= channels() * passes();
    return size;
}

void WholeDeconvolution::describe(RunRecord& record) const {
    const Choice& choice = deconvolution->choice();
    record.settings = choice.settings;
    record.channels = channels();
    record.samples = deconvolution->samples();
    record.rounds = 1;
    record.moved = deconvolution->movement();
    record.choice = choice.record;
    record.remarks = choice.warnings;
    if (record.choice && job.wordsWith) {
        record.choice->rerun = job.wordsWith(choice.settings, choice.treatment);
    }
}

// Points of the search, one a line.
void WholeDeconvolution::writeCurve() const {
    const std::optional<ChoiceRecord>& record = deconvolution->choice().record;
    if (!record || record->rule.empty()) {
        throw Failure(
            "there is no curve to write, since nothing was searched; give --max-iterations auto, "
            "or --strength auto");
    }
    ResultInfo info;
    info.columnNames = {record->steps ? "steps" : "strength", "error", "kept", "criterion"};
    info.channels = static_cast<int>(info.columnNames.size());
    info.samples = std::ssize(record->curve);
    info.notes = {job.words};
    const std::unique_ptr<SignalWriter> writer = createSignal(*job.curve, info);
    for (const CurvePoint& point : record->curve) {
        const std::array row = {point.parameter, point.error, point.kept, point.criterion};
        writer->write(row.data(), 1);
    }
    writer->finish({});
}

void WholeDeconvolution::report(const Deconvolution::Answer& answer, int channel,
                                Findings& findings, RunRecord& record) const {
    findings.add({0, channel, answer.operands.signal, answer.operands.kernel, answer.made.samples,
                  answer.made.numbers});
    record.numberNames = answer.names;
    if (!answer.numbers.empty()) {
        record.numbers.push_back({0, channel, answer.numbers});
    }
    if (answer.fault) {
        record.remarks.push_back(*answer.fault);
    }
    if (answer.response) {
        record.responses.push_back(*answer.response);
    }
    if (!answer.halfWidths.empty()) {
        if (!record.uncertainty) {
            record.uncertainty = UncertaintyRecord{*deconvolution->choice().noise, 0.0, 0.0};
        }
        const double sum = std::accumulate(answer.halfWidths.begin(), answer.halfWidths.end(), 0.0);
        UncertaintyRecord& uncertainty = *record.uncertainty;
        uncertainty.halfWidth =
            std::max(uncertainty.halfWidth, sum / static_cast<double>(answer.halfWidths.size()));
        uncertainty.resolution = std::max(uncertainty.resolution, answer.resolution);
    }
}

void WholeDeconvolution::run(ResultTap& tap, StepRelay& relay, Findings& findings,
                             RunRecord& record) {
    const auto width = static_cast<std::size_t>(channels());
    const auto length = static_cast<std::size_t>(deconvolution->samples());
    const std::size_t columns = hasBand() ? 3 : 1;
    std::vector<double> values(width * length), written(hasBand() ? values.size() * columns : 0);
    for (std::size_t c = 0; c < width; ++c) {
        const int channel = static_cast<int>(c);
        Deconvolution::Answer answer;
        try {
            answer = deconvolution->run(channel,
                                        [&](int pass) { return relay.before(0, channel, pass); });
        } catch (const Deconvolution::Stopped&) {
            throw Failure("stopped after 0 of 1 blocks; nothing is written");
        } catch (const Failure& failure) {
            throw Failure(fmt::format("block 1: {}", failure.what()));
        }
        report(answer, channel, findings, record);
        for (std::size_t i = 0; i < length; ++i) {
            values[i * width + c] = answer.samples[i];
            if (hasBand()) {
                double* const row = written.data() + (i * width + c) * columns;
                row[0] = answer.samples[i];
                row[1] = answer.samples[i] - answer.halfWidths[i];
                row[2] = answer.samples[i] + answer.halfWidths[i];
            }
        }
    }
    tap.take(values.data(), deconvolution->samples(), written);
}
