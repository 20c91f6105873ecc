#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/jobs/CompareJob.h"
#include "workbench/jobs/FoldJob.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class Desktop;

// What a window asks of the program that opened it. A run is said in words of the command line, so
// that what a window does, and the command line that it shows, cannot differ.
class FoldBench {
public:
    virtual ~FoldBench() = default;

    // Words without the program's name: command, both files, options.
    using Words = std::vector<std::string>;

    // A run, with what it was made of, and how it looks.
    struct Answer {
        Outcome outcome;
        std::shared_ptr<const Signal> signal, kernel;
        Figure figure;
    };
    struct Compared {
        std::vector<MethodOutcome> outcomes;
        Figure figure;
    };

    // The signal and the kernel of words whose files may not be there yet, "", and how they look.
    // Failure as openSignal, and with one line where the words are wrong.
    virtual Answer look(const Words& words) = 0;

    // Both may be called in any thread, by several at once. Failure with one line, where the words
    // are wrong too, and where the observer stopped before there was a result.
    virtual Answer run(const Words& words, JobObserver& observer) = 0;
    virtual Compared compare(const Words& words, JobObserver& observer) = 0;

    // As a shell takes them, "fendra" included.
    virtual std::string commandLine(const Words& words) = 0;

    // Writes the result of a run of these words to a file, as the command line with -o would, and
    // returns what of it has no place there. Failure as createSignal.
    virtual std::string save(const Words& words, const Answer& answer, const std::string& file) = 0;

    // Stores settings as a graph. Failure if no module can be set to them, and as storeGraph.
    virtual void saveGraph(const FendraSettings& settings, const std::string& file) = 0;
    // Shows the module's own settings dialog, and returns what it was left with; none: dismissed.
    virtual std::optional<FendraSettings> editSettings(const FendraSettings& settings,
                                                       Desktop& desktop) = 0;
};
