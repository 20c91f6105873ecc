#include "platform/CDialog.h"

#include "platform/ResourceChain.h"
#include "tests/support/Person.h"

#include <gtest/gtest.h>

using enum ControlKind;

// Two radio groups, of which the first begins without a mark, with a label in the second.
static constexpr ControlResource controls[] = {
    {10, radio, false, 0, 0, 9, 9, "&a"},  {11, radio, false, 0, 0, 9, 9, "b"},
    {20, radio, true, 0, 0, 9, 9, "c"},    {0, label, false, 0, 0, 9, 9, "\u00fc"},
    {21, radio, false, 0, 0, 9, 9, "d"},   {30, checkBox, true, 0, 0, 9, 9, "e"},
    {40, edit, false, 0, 0, 9, 9, ""},     {50, dropDown, false, 0, 0, 9, 9, ""},
    {IDOK, button, false, 0, 0, 9, 9, ""}, {IDCANCEL, button, false, 0, 0, 9, 9, ""}};
static constexpr ListEntryResource entries[] = {{50, "x"}, {0, "of nobody"}, {50, "y"}};
static constexpr DialogResource dialogs[] = {{1, 1033, 9, 9, "test", "", 8, controls, entries}};

namespace {

class TestDialog : public CDialog {
public:
    using CDialog::CDialog;
    std::string heard;  // the controls of which OnCommand was told

protected:
    void OnInitDialog() override {
        EnableDlgItem(20, false);
        EnableDlgItem(IDCANCEL, false);
        EnableDlgItem(99, false);  // there is none
    }
    void OnCommand(unsigned id) override {
        heard += std::to_string(id) + " ";
        CDialog::OnCommand(id);
    }
};

}  // namespace

// The checked radios and boxes, the text, the label in Windows-1252, the entry.
static std::string stateOf(const CDialog& dialog) {
    std::string text;
    for (const DialogControl& control : dialog.controls()) {
        text += control.checked ? std::to_string(control.resource->id) : "";
    }
    return text + std::string(dialog.control(40)->text) + std::string(dialog.controls()[3].text) +
           std::to_string(dialog.control(50)->selection);
}

TEST(CDialog, DoesWhatAPersonCanDoAndTellsOfIt) {
    const ResourceLibrary library({}, {}, {}, dialogs);
    Person person("10 11 20 21 30 30 30 40=_x 50#1 30=x 10#0 40 50 99 50#2 2 Escape 1 30");
    TestDialog dialog(1);
    std::string state;
    person.look = [&](const CDialog& shown) { state = stateOf(shown); };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(state,
              "112130 x\xfc"
              "1");
    EXPECT_EQ(person.refused, "20 30=x 10#0 40 50 99 50#2 2 30 ");
    EXPECT_EQ(dialog.heard, "10 11 21 30 30 30 40 50 1 ");
    EXPECT_EQ(TestDialog(2).DoModal(), -1);
}
