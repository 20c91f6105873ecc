#include "workbench/terminal/completionScript.h"

#include <algorithm>

const std::vector<Shell>& Shell::all() {
    static const std::vector<Shell> rows = {{"bash", bashCompletion},
                                            {"zsh", zshCompletion},
                                            {"fish", fishCompletion},
                                            {"powershell", powershellCompletion}};
    return rows;
}

std::vector<std::string> Shell::words() {
    std::vector<std::string> words;
    for (const Shell& shell : all()) {
        words.emplace_back(shell.word);
    }
    return words;
}

std::string Shell::scriptFor(const std::string& word, const CompletionTable& table) {
    const auto row = std::find_if(all().begin(), all().end(),
                                  [&](const Shell& shell) { return shell.word == word; });
    return row->script(table);
}
