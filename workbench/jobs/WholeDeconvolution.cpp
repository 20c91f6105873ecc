#include "workbench/jobs/WholeDeconvolution.h"

#include "workbench/jobs/ChannelRelay.h"
#include "workbench/jobs/Findings.h"
#include "workbench/jobs/ResultTap.h"
#include "workbench/jobs/jobSize.h"
#include "workbench/methods/Method.h"
#include "workbench/module/pairing.h"
#include "workbench/system/inRounds.h"

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
    treatment.warns = job.judged;
    const bool searches =
        job.leftToData.any() || job.treatment.automatic ||
        (job.settings.method == FendraSettings::regularized && !job.treatment.strength);
    if (searches) {
        observer.chooses(secondsToChoose(signal.info.samples));
    }
    deconvolution.emplace(library, signal, kernel, job.settings, job.leftToData, treatment);
    checkMemory(method(), deconvolution->moduleLength(), 0.0);
    threads = threadsThatFit();
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

JobSize WholeDeconvolution::sizeOfChannel() const {
    const auto length = static_cast<double>(deconvolution->moduleLength());
    JobSize size = sizeOfRun(method(), deconvolution->choice().settings, length, length);
    size.multiplyAdds *= passes();
    size.seconds *= passes();
    return size;
}

JobSize WholeDeconvolution::size() const {
    JobSize size = sizeOfChannel();
    size.multiplyAdds *= channels();
    size.seconds *= partsInTurn(channels(), threads);
    return size;
}

// A thread has some ten arrays of a channel: operands, their spectra, the result, and what is made
// of it.
int WholeDeconvolution::threadsThatFit() const {
    constexpr double arrays = 10.0;
    const std::int64_t length = deconvolution->moduleLength();
    return threadsFor(job.threads, method(),
                      {sizeOfChannel(), channels(), length, arrays * static_cast<double>(length)});
}

void WholeDeconvolution::describe(RunRecord& record) const {
    const Choice& choice = deconvolution->choice();
    record.settings = choice.settings;
    record.channels = channels();
    record.samples = deconvolution->samples();
    record.rounds = 1;
    record.moved = deconvolution->movement();
    record.stays = job.treatment.origin.kind == Origin::Kind::none;
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

// Then the estimate of a step can be the result.
bool WholeDeconvolution::isOneIteration() const {
    return method().code == FendraSettings::vanCittert && channels() == 1 && passes() == 1;
}

// What would have ended by itself where it was stopped, with what was found in the data.
void WholeDeconvolution::describeStop(const Deconvolution::Answer& answer,
                                      RunRecord& record) const {
    if (!isOneIteration()) {
        return;
    }
    const Choice& choice = deconvolution->choice();
    FendraSettings bounded = choice.settings;
    bounded.maxIterations = static_cast<std::uint32_t>(answer.numbers.at(1));
    record.stop = {bounded.maxIterations, choice.settings.maxIterations, ""};
    if (job.wordsWith && job.graph.empty()) {
        record.stop->rerun = job.wordsWith(bounded, choice.treatment);
    }
}

void WholeDeconvolution::throwStopped() const {
    throw Stopped(fmt::format(
        "stopped before {}; nothing is written",
        isOneIteration() ? "the first step of the iteration had ended" : "there was a result"));
}

Deconvolution::Answer WholeDeconvolution::answer(int channel, StepRelay& relay) const {
    ChannelRelay watch(relay, 0, passes());
    watch.showEstimates(channel, [&](const double* estimate, int length) {
        return deconvolution->resultOf(channel, {estimate, estimate + length});
    });
    try {
        return deconvolution->run(channel, [&](int pass) { return watch.before(pass); });
    } catch (const kernels::Stopped&) {
        throwStopped();
    } catch (const Stopped&) {
        throwStopped();
    } catch (const Failure& failure) {
        throw Failure(fmt::format("block 1: {}", failure.what()));
    }
}

// Puts a channel into rows of all channels, and where they are given, of all bands.
static void put(const Deconvolution::Answer& answer, std::size_t channel, std::size_t channels,
                std::vector<double>& values, std::vector<double>& bands) {
    for (std::size_t i = 0; i < answer.samples.size(); ++i) {
        const std::size_t place = i * channels + channel;
        values[place] = answer.samples[i];
        if (!bands.empty()) {
            bands[3 * place] = answer.samples[i];
            bands[3 * place + 1] = answer.samples[i] - answer.halfWidths[i];
            bands[3 * place + 2] = answer.samples[i] + answer.halfWidths[i];
        }
    }
}

// A channel is a round of its own, so that no more answers are in memory than there are threads.
void WholeDeconvolution::run(ResultTap& tap, StepRelay& relay, Findings& findings,
                             RunRecord& record) {
    const auto width = static_cast<std::size_t>(channels());
    std::vector<double> values(width * static_cast<std::size_t>(deconvolution->samples()));
    std::vector<double> bands(hasBand() ? 3 * values.size() : 0);
    RoundData<Deconvolution::Answer> answers(threads);
    const auto run = [&](std::int64_t channel, int) {
        answers[channel] = answer(static_cast<int>(channel), relay);
    };
    // An estimate that is kept is judged whatever happens.
    const kernels::WorkWatch::Question goesOn = [&](double /*share*/) {
        return job.keepPartial || relay.stopped() || relay.advance(0, 0.0);
    };
    const auto end = [&](std::int64_t channel) {
        const kernels::WorkWatch judging(goesOn);
        const Deconvolution::Answer done = std::move(answers[channel]);
        report(done, static_cast<int>(channel), findings, record);
        if (relay.stopped()) {
            describeStop(done, record);
        }
        put(done, static_cast<std::size_t>(channel), width, values, bands);
    };
    inRounds(threads, channels(), 1, {[](std::int64_t) {}, run, end});
    tap.take(values.data(), deconvolution->samples(), bands);
}
