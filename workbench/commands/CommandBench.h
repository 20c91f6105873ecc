#pragma once

#include "workbench/desktop/FoldBench.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <string>

// A window's bench, by the commands themselves: words are parsed as those of a command line. Files
// are kept in memory for as long as they stay as they are on the disk.
class CommandBench final : public FoldBench {
public:
    // moduleFile: the library to run; empty: the one beside the program.
    explicit CommandBench(std::string moduleFile) : module(std::move(moduleFile)) {}

    Answer look(const Words& words) override;
    Answer run(const Words& words, JobObserver& observer) override;
    Compared compare(const Words& words, JobObserver& observer) override;
    std::string commandLine(const Words& words) override;
    std::string save(const Words& words, const Answer& answer, const std::string& file) override;
    void saveGraph(const FendraSettings& settings, const std::string& file) override;
    std::optional<FendraSettings> editSettings(const FendraSettings& settings,
                                               Desktop& desktop) override;

private:
    struct Kept {
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        std::shared_ptr<const Signal> signal;
    };

    std::shared_ptr<const Signal> signalOf(const SignalSource& source,
                                           const std::string& readingWords);
    [[nodiscard]] Words withModule(const Words& words) const;

    const std::string module;
    std::mutex guard;  // of what follows
    std::map<std::string, Kept> kept;
};
