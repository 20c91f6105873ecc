#pragma once

#include "workbench/figures/Figure.h"
#include "workbench/jobs/FoldJob.h"

#include <memory>
#include <string>
#include <vector>

class Desktop;

// What a window asks of the program that opened it. Everything is said in words of the command
// line, so that what a window does, and the command line that it shows, cannot differ.
class FoldBench {
public:
    virtual ~FoldBench() = default;

    // Words without the program's name: command, files, options.
    using Words = std::vector<std::string>;

    // A run, with what it was made of, and how it looks.
    struct Answer {
        Outcome outcome;
        std::shared_ptr<const Signal> signal, kernel;
        Figure figure;
    };

    // A whole file. Failure as openSignal.
    virtual std::shared_ptr<const Signal> read(const std::string& file) = 0;
    // The signals as they are before a run; null: not chosen yet.
    virtual Figure look(const std::shared_ptr<const Signal>& signal,
                        const std::shared_ptr<const Signal>& kernel) = 0;

    // May be called in any thread, by several at once. Failure with one line, where the words are
    // wrong too, and where the observer stopped before there was a result.
    virtual Answer run(const Words& words, JobObserver& observer) = 0;

    // The words as a shell takes them, "fendra" included.
    virtual std::string commandLine(const Words& words) = 0;

    // Writes the result of a run to a file, as the command line with -o would. Failure as
    // createSignal; what was there then is untouched.
    virtual void save(const Words& words, const Answer& answer, const std::string& file,
                      bool replace) = 0;

    // Stores the settings that a run found, or else those of the words, as a graph.
    virtual void saveGraph(const Words& words, const Answer* answer, const std::string& file,
                           bool replace) = 0;

    // Shows the module's own settings dialog on the settings of the words, and returns the words
    // with those that it was left with; the same words where it was dismissed.
    virtual Words editSettings(const Words& words, Desktop& desktop) = 0;
};
