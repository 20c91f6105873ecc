// Writes the tables of resources.h as a resource script of Windows, in UTF-8, and the files that it
// names, into a folder:
//     writeScript FOLDER
// Runs on the machine that builds.

#include "platform/Windows1252.h"
#include "resources/resources.h"

#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

static std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        result += c == '"' ? "\"\"" : c == '\n' ? "\\n" : std::string(1, c);
    }
    return result + '"';
}

// What follows is in that language: its lower ten bits, and its country above them.
static void writeLanguage(std::ostream& script, unsigned language) {
    script << "LANGUAGE " << (language & 0x3FF) << ", " << (language >> 10) << '\n';
}

// A resource whose bytes are in a file beside the script.
class Attachments {
public:
    Attachments(std::string place, std::ostream& out) : folder(std::move(place)), script(out) {}

    void write(unsigned id, unsigned language, std::string_view type, std::string_view bytes) {
        const std::string name = "attachment" + std::to_string(++count);
        std::ofstream(folder + '/' + name, std::ios::binary) << bytes;
        writeLanguage(script, language);
        script << id << ' ' << type << ' ' << quoted(name) << '\n';
    }
    void write(const BinaryResource& resource, std::string_view type) {
        write(resource.id, resource.language, type,
              {reinterpret_cast<const char*>(resource.bytes), resource.size});
    }

private:
    std::string folder;
    std::ostream& script;
    int count = 0;
};

static void writeString(std::ostream& script, const StringResource& string) {
    writeLanguage(script, string.language);
    script << "STRINGTABLE { " << string.id << ' ' << quoted(string.text) << " }\n";
}

// Class and style of the windows that stand for a control.
static std::string_view windowOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::frame:
            return "\"Button\", BS_GROUPBOX";
        case ControlKind::label:
            return "\"Static\", SS_LEFT";
        case ControlKind::line:
            return "\"Static\", SS_SUNKEN";
        case ControlKind::radio:
            return "\"Button\", BS_AUTORADIOBUTTON";
        case ControlKind::checkBox:
            return "\"Button\", BS_AUTOCHECKBOX | WS_TABSTOP";
        case ControlKind::edit:
            return "\"Edit\", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP";
        case ControlKind::dropDown:
            return "\"ComboBox\", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP";
        case ControlKind::defaultButton:
            return "\"Button\", BS_DEFPUSHBUTTON | WS_TABSTOP";
        case ControlKind::helpButton:
        case ControlKind::button:
            return "\"Button\", BS_PUSHBUTTON | WS_TABSTOP";
    }
    return {};
}

static void writeControl(std::ostream& script, const ControlResource& control) {
    const std::string_view text = control.text;
    script << "  CONTROL " << quoted(text) << ", "
           << (control.id == 0 ? "-1" : std::to_string(control.id)) << ", "
           << windowOf(control.kind);
    if (control.startsGroup) {
        script << " | WS_GROUP" << (control.kind == ControlKind::radio ? " | WS_TABSTOP" : "");
    }
    script << (text.find('\n') != std::string_view::npos ? " | BS_MULTILINE" : "");
    // The height of a drop-down counts its open list: here, as much again for each of five entries.
    const int height = control.kind == ControlKind::dropDown ? 6 * control.height : control.height;
    script << ", " << control.x << ", " << control.y << ", " << control.width << ", " << height
           << '\n';
}

// Numbers in a list's data, little-endian.
static std::string littleEndian(std::size_t number, int bytes) {
    std::string result;
    for (int i = 0; i < bytes; ++i, number >>= 8) {
        result += static_cast<char>(number & 0xFF);
    }
    return result;
}

// The data of the lists, as the framework reads them: for each entry the control, the message that
// adds it, the length with the terminator (32 bits) and the text in Windows-1252; 0 ends them.
static std::string listData(const DialogResource& dialog) {
    constexpr std::size_t addString = 0x403;
    std::string data;
    for (const ListEntryResource& entry : dialog.listEntries) {
        const CString text = fromUtf8(entry.text);
        const auto length = static_cast<std::size_t>(text.GetLength()) + 1;
        data += littleEndian(entry.controlId, 2) + littleEndian(addString, 2);
        data += littleEndian(length, 4) + std::string(text, length);
    }
    return data + littleEndian(0, 2);
}

static void writeDialog(std::ostream& script, const DialogResource& dialog) {
    writeLanguage(script, dialog.language);
    script << dialog.id << " DIALOG 0, 0, " << dialog.width << ", " << dialog.height
           << "\nSTYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU\nCAPTION "
           << quoted(dialog.title) << "\nFONT " << dialog.fontPoints << ", "
           << quoted(dialog.fontName) << "\n{\n";
    for (const ControlResource& control : dialog.controls) {
        writeControl(script, control);
    }
    script << "}\n";
}

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "writeScript FOLDER\n";
        return 2;
    }
    const std::string folder = arguments[1];
    std::ofstream script(folder + "/fendra.rc", std::ios::binary);
    script << "#pragma code_page(65001)\n#include <windows.h>\n";

    Attachments attachments(folder, script);
    for (const BinaryResource& bitmap : moduleBitmaps) {
        attachments.write(bitmap, "BITMAP");
    }
    for (const BinaryResource& icon : moduleIcons) {
        attachments.write(icon, "ICON");
    }
    for (const StringResource& string : moduleStrings) {
        writeString(script, string);
    }
    for (const DialogResource& dialog : moduleDialogs) {
        writeDialog(script, dialog);
        attachments.write(dialog.id, dialog.language, "240", listData(dialog));
    }
    script.close();
    if (!script) {
        std::cerr << folder << "/fendra.rc cannot be written\n";
        return 1;
    }
    return 0;
}
