#pragma once

#include "platform/CDialog.h"
#include "platform/Desktop.h"
#include "platform/Windows1252.h"

#include <functional>
#include <sstream>
#include <string>
#include <utility>

// A desktop with a person before it, who does what a script says, word by word, until it or the
// dialog ends:
//     1026       clicks the control
//     1030=0.5   types; _ stands for a blank
//     1036#2     selects an entry
//     Escape
// Installed as long as it lives.
class Person : public Desktop {
public:
    explicit Person(std::string words) : script(std::move(words)), before(install(this)) {}
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;
    ~Person() override { install(before); }

    int messageBox(const CString& text, const CString& caption, unsigned style) override {
        messages += toUtf8(text) + "|";
        messageFrame = toUtf8(caption) + " " + std::to_string(style);
        return IDOK;
    }

    void runDialog(CDialog& dialog) override {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            refused += act(dialog, word) ? "" : word + " ";
        }
        look(dialog);
    }

    std::string messages;      // each ended by |
    std::string messageFrame;  // caption and style of the last
    std::string refused;       // the words that the dialog had no use for
    std::function<void(const CDialog&)> look = [](const CDialog& /*dialog*/) {};  // in the end

private:
    static bool act(CDialog& dialog, const std::string& word) {
        if (word == "Escape") {
            dialog.cancel();
            return true;
        }
        const std::size_t end = word.find_first_of("=#");
        const auto id = static_cast<unsigned>(std::stoul(word.substr(0, end)));
        if (end == std::string::npos) {
            return dialog.click(id);
        }
        std::string value = word.substr(end + 1);
        if (word[end] == '#') {
            return dialog.select(id, std::stoi(value));
        }
        for (char& c : value) {
            c = c == '_' ? ' ' : c;
        }
        return dialog.type(id, value.c_str());
    }

    std::string script;
    Desktop* before;
};
