#pragma once

#include <string_view>
#include <vector>

enum class PageLanguage { english, german, french };

// What a page says by itself. {0} and {1} stand for names.
enum class PageText {
    language,  // its tag: "en"
    deconvolution,
    comparison,
    sweep,
    remarks,
    stopped,
    pictures,
    pointer,
    chosen,
    worth,
    methods,
    methodsNote,
    methodNumbers,
    result,
    settings,
    files,
    again,
    withoutSearch,
    withoutStop,
    more,
    complete,
    signal,
    kernel,
    file,
    format,
    samples,
    channels,
    channel,
    rate,
    block,
    wholeSignal,
    lowest,
    highest,
    fileDigest,
    sampleDigest,
    method,
    module,
    padded,
    yes,
    rule,
    steps,
    strength,
    convergence,
    oversampling,
    explained,
    kept,
    noise,
    noiseAtMost,
    whiteness,
    predictedError,
    band,
    resolution,
    gain,
    peak,
    peakSample,
    aboveNoise,
    quietest,
    truth,
    error,
    compared,
    misfit,
    roughness,
    reported,
    frequencies,
    seconds,
    fade,
    last = fade
};

struct PageTextRow {
    PageText text;
    const char *english, *german, *french;
};

// One row a text, in their order.
const std::vector<PageTextRow>& pageTexts();

std::string_view pageText(PageText text, PageLanguage language);
