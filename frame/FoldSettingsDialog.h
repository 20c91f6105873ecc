#pragma once

#include "frame/FoldSettings.h"
#include "platform/CDialog.h"

#include <vector>

// The dialog in which a person sets a module up. It enables what applies to the chosen direction
// and method:
//     direction  method  time domain  iteration, filter  parameters of the iteration, of the filter
//     0          0, 1    enabled      disabled           disabled                      disabled
//     1          1       disabled     enabled            disabled                      disabled
//     1          2       disabled     enabled            enabled                       disabled
//     1          3       disabled     enabled            disabled                      enabled
// The error value needs its check box checked as well. A method that the direction does not have
// gives way to the frequency domain. Values of a method that is not chosen stay, and are tested on
// OK like the others: a file may hold an error value out of range.
class FoldSettingsDialog final : public CDialog {
public:
    // The settings one by one, in this order: the list is fixed, as the exports are.
    FoldSettingsDialog(CString helpPage, std::int32_t executionMode, std::int32_t method,
                       std::int32_t direction, std::uint32_t maxIterations, double convergence,
                       std::int32_t abortAtError, double errorValue, std::int32_t abortAtMinError,
                       std::int32_t scaling, CWnd* parent);

    // What the dialog works on, a copy. After OK, what was chosen; a value that no control shows
    // any more, since only a file can hold it, is -1.
    FoldSettings settings;

protected:
    void OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnCommand(unsigned id) override;
    std::vector<unsigned> choicesFor(unsigned id) const override;

private:
    void enableMethodsOf(bool convolution);
    void enableMethod(unsigned radio, bool enable);
    void enableParameters();

    CString helpKey;
};
